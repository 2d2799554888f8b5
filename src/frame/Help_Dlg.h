#pragma once

#include "frame/WebLink.h"
#include "platform/controls/ButtonDialog.h"

/// The about box: two lines of notice and a link to the maker's page on the web. It stays English in all languages.
class Help_Dlg : public ButtonDialog
{
    Q_OBJECT

public:
    explicit Help_Dlg(QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    QLayout* notice();

    WebLink* Label_ylm_link;
    UsrButton* cmd_ok;
};
