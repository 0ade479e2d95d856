#pragma once
// Screen readers and UI automation read the labels and buttons through
// QAccessible: caption as name, a role that says what a press does.

namespace vm20 {

// Registers the library's accessible interfaces once per process.
void InstallAccessibility();

} // namespace vm20
