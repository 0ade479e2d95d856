#pragma once
// Screen readers and UI automation read a result column panel as a list of
// rows: each row is named by its sentence, and its children are its labels.

namespace vm20 {

// Registers the panel's accessible interface; Qt ignores a second call.
void InstallRFPanelAccessibility();

} // namespace vm20
