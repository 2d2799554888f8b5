#include "platform/controls/picture_box_face.h"

#include "platform/controls/PictureBox.h"

#include <QAccessibleWidget>

namespace {

constexpr int least_percent = 0;
constexpr int most_percent = 100;

/// What an assistive program sees of a picture box.
class PictureBoxFace : public QAccessibleWidget, private QAccessibleValueInterface
{
public:
    explicit PictureBoxFace(PictureBox& box) : QAccessibleWidget(&box), box_(box) {}

    QAccessible::Role role() const override
    {
        if (box_.slider() != nullptr)
            return QAccessible::Slider;
        if (box_.checked())
            return QAccessible::CheckBox;
        return childCount() > 0 ? QAccessible::Grouping : QAccessible::Graphic;
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.checkable = box_.checked().has_value();
        state.checked = box_.checked().value_or(false);
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface && box_.slider() != nullptr)
            return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    QStringList actionNames() const override
    {
        QStringList names = QAccessibleWidget::actionNames();
        if (box_.checked() && box_.isEnabled())
            names.prepend(toggleAction());
        return names;
    }

    void doAction(const QString& name) override
    {
        if (name != toggleAction() && name != pressAction())
            QAccessibleWidget::doAction(name);
        else if (box_.checked() && box_.isEnabled())
            Q_EMIT box_.Click();
    }

private:
    QVariant currentValue() const override
    {
        return box_.slider() != nullptr ? box_.slider()->shown_percent() : least_percent;
    }
    void setCurrentValue(const QVariant& value) override
    {
        if (box_.slider() != nullptr && box_.isEnabled())
            box_.slider()->drag_to(qBound(least_percent, value.toInt(), most_percent));
    }
    QVariant minimumValue() const override { return least_percent; }
    QVariant maximumValue() const override { return most_percent; }
    QVariant minimumStepSize() const override { return 1; }

    PictureBox& box_;
};

QAccessibleInterface* face_of(const QString& /*class_name*/, QObject* object)
{
    auto* box = qobject_cast<PictureBox*>(object);
    return box != nullptr ? new PictureBoxFace(*box) : nullptr;
}

} // namespace

void install_picture_box_face()
{
    QAccessible::installFactory(face_of);
}
