#pragma once

#include "platform/GenreBox.h"

#include <QComboBox>

/// A drop-down list whose entries are kept in alphabetical order, case ignored, the empty entry first.
class ComboBox : public QComboBox, public GenreBox
{
    Q_OBJECT

public:
    explicit ComboBox(QWidget* parent = nullptr);

    void Clear() override;
    void AddItem(const QString& text) override;
    int ListIndex() const override;
    void set_ListIndex(int position) override;
    QString Text() const override;

Q_SIGNALS:
    void GotFocus();

protected:
    void focusInEvent(QFocusEvent* event) override;
};
