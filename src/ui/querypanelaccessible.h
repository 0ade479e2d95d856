#pragma once
// Screen readers and UI automation read a condition panel as a list of
// rows: each row is named by its sentence, and its children are its labels.

class QAccessibleInterface;

namespace vm20 {

class TFilterRow;
class TNQueryPanel;

// Registers the panel's accessible interface; Qt ignores a second call.
void InstallQueryPanelAccessibility();

// The accessible item of one row of a panel (nullptr when it shows none).
QAccessibleInterface *QueryRowAccessible(TNQueryPanel *panel, const TFilterRow *row);

} // namespace vm20
