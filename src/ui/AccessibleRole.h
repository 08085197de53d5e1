#pragma once

#include <QAccessible>

class QWidget;

/// What a screen reader takes a widget for, where its class doesn't say.
namespace tirlo::AccessibleRole {

/// Gives the widget the role; it has to be told before anyone has asked.
///
/// A button stays one that can be pressed, and is selected while it is checked.
void set(QWidget &widget, QAccessible::Role role);

/// Gives the widget a name; one that it has already is told to nobody.
void setName(QWidget &widget, const QString &name);

} // namespace tirlo::AccessibleRole
