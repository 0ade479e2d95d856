// The Qt Sql layer is empty until its first provider lands.
namespace vm20 {
int vm20sqlPlaceholder() { return 0; }
}
