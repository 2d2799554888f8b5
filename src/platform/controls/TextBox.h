#pragma once

#include <QLineEdit>

/// A one-line text box. It keeps only what stands before a NUL, and no more than 16,383 characters, and tells of every
/// change, also one made from code. Nothing can be dropped on it.
class TextBox : public QLineEdit
{
    Q_OBJECT

public:
    explicit TextBox(QWidget* parent = nullptr);

    QString Text() const { return text(); }
    /// Replaces the text and shows it from its start. Change is raised when the text becomes another.
    void set_Text(const QString& text);

Q_SIGNALS:
    void Change();
    void GotFocus();
    void MouseMove();

protected:
    void focusInEvent(QFocusEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    void take_change(const QString& text);
};
