#include "AccessibleRole.h"

#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QVariant>

namespace tirlo::AccessibleRole {

namespace {

constexpr auto roleProperty = "accessibleRole";

/// A button under another role.
class RoleOfButton final : public QAccessibleWidget
{
public:
    RoleOfButton(QAbstractButton &button, QAccessible::Role role)
        : QAccessibleWidget(&button, role)
        , m_button(button)
    {
    }

    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.selectable = m_button.isCheckable();
        state.selected = m_button.isChecked();
        state.checkable = m_button.isCheckable();
        state.checked = m_button.isChecked();
        return state;
    }

    [[nodiscard]] QStringList actionNames() const override
    {
        return QStringList{pressAction()} + QAccessibleWidget::actionNames();
    }

    void doAction(const QString &name) override
    {
        if (name == pressAction())
            m_button.click();
        else
            QAccessibleWidget::doAction(name);
    }

private:
    QAbstractButton &m_button;
};

QAccessibleInterface *make(const QString &, QObject *object)
{
    auto *widget = qobject_cast<QWidget *>(object);
    const QVariant role = widget ? widget->property(roleProperty) : QVariant();
    if (!role.isValid())
        return nullptr;
    const auto told = QAccessible::Role(role.toInt());
    if (auto *button = qobject_cast<QAbstractButton *>(widget))
        return new RoleOfButton(*button, told);
    return new QAccessibleWidget(widget, told);
}

} // namespace

void set(QWidget &widget, QAccessible::Role role)
{
    [[maybe_unused]] static const bool isInstalled = (QAccessible::installFactory(make), true);
    widget.setProperty(roleProperty, int(role));
}

void setName(QWidget &widget, const QString &name)
{
    if (name != widget.accessibleName())
        widget.setAccessibleName(name);
}

} // namespace tirlo::AccessibleRole
