#pragma once

#include <QLineEdit>
#include <QPersistentModelIndex>

class QAbstractItemView;

/// The box in which a label of a list or tree is edited in its place. It opens over the text of its row with the
/// keyboard focus, grows with what is typed, never leaves a part of that text bare, and ends once: by Enter, Tab or a
/// loss of the focus as accepted, by Esc or by cancel() as cancelled. All keys without Alt are its own, so no shortcut
/// of a menu acts meanwhile.
class LabelEditor : public QLineEdit
{
    Q_OBJECT

public:
    enum class Selects
    {
        all,
        stem ///< what stands before the last full stop, so that typing keeps a file's extension
    };

    /// Opens on a row that is in sight. `text` is the label as it is, not as it is drawn.
    LabelEditor(QAbstractItemView& view, const QModelIndex& index, const QString& text, Selects selects);

    bool is_open() const { return is_open_; }
    void cancel() { finish(false); }
    /// To be called when the row may have moved.
    void place();

Q_SIGNALS:
    /// The edit is over, and the box is gone from the screen. `text` is as typed; the very old one where nothing was.
    void Ended(bool accepted, const QString& text);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void finish(bool accepted);

    QAbstractItemView& view_;
    QPersistentModelIndex index_;
    QString old_text_;
    bool is_open_ = true;
};
