#pragma once

#include <QLabel>
#include <QTimer>
#include <QWidget>

#include <vector>

/// A status bar of panels side by side, each with an index from 1 and a width in twips; the last takes what is left.
/// A text too long for its panel is shown with an ellipsis in its middle; its accessible name is the whole text. A
/// notice lies over all panels for a while.
class StatusBar : public QWidget
{
    Q_OBJECT

public:
    /// `widths` in twips, one for each panel.
    explicit StatusBar(std::vector<int> widths, QWidget* parent = nullptr);

    QString panel_text(int index) const;
    void set_panel_text(int index, const QString& text);
    int panel_width(int index) const;
    void set_panel_width(int index, int twips);

    /// Shows `text` over the panels for 8 seconds, in place of a notice before it. The panels keep their texts, and
    /// take new ones meanwhile.
    void show_notice(const QString& text);
    /// The notice that is shown; empty for none.
    QString notice() const;

    QSize sizeHint() const override;

Q_SIGNALS:
    void MouseMove();

protected:
    void mouseMoveEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QLabel* panel(int index) const;
    void place_panels();

    std::vector<QLabel*> panels_;
    std::vector<int> widths_;
    QLabel* notice_;
    QTimer* notice_time_;
};
