#pragma once

#include "platform/controls/palette.h"

#include <QPainter>
#include <QRadioButton>
#include <QStyleOptionButton>

#include <type_traits>

/// A radio button or check box without a caption of its own: what stands for one is painted below it or laid over it.
/// A click anywhere on it counts, and the focus shows round the whole of it.
template<typename Button> class LineButton : public Button
{
public:
    explicit LineButton(QWidget* parent) : Button(parent)
    {
        this->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
        this->setMouseTracking(true); // the form takes the moves over it as well
    }

    /// Where what stands for a caption begins, from the left.
    static constexpr int caption_left = 28;
    /// Height of its first line, beside which the mark stands, where the button is higher.
    static constexpr int line_height = 32;

protected:
    bool hitButton(const QPoint& point) const override { return this->rect().contains(point); }

    void paintEvent(QPaintEvent* /*event*/) override
    {
        constexpr int mark_left = 6;
        constexpr auto element = std::is_same_v<Button, QRadioButton> ? QStyle::CE_RadioButton : QStyle::CE_CheckBox;
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        if (this->hasFocus()) {
            painter.setPen(QPen(palette::accent, palette::stroke));
            painter.drawRoundedRect(QRectF(this->rect()).adjusted(1, 1, -1, -1), palette::corner_radius,
                                    palette::corner_radius);
        }
        QStyleOptionButton option;
        this->initStyleOption(&option);
        option.state.setFlag(QStyle::State_HasFocus, false); // the style would mark the missing caption only
        option.rect.adjust(mark_left, 0, 0, 0);
        option.rect.setHeight(qMin(option.rect.height(), line_height));
        this->style()->drawControl(element, &option, &painter, this);
    }
};
