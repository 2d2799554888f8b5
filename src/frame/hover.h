#pragma once

#include <QObject>

#include <vector>

class MainControls;
class UsrButton;

/// Which of the main window's buttons is lit: a button under the mouse puts out the others of its own row and leaves
/// the other row alone, on purpose.
class HoverRows : public QObject
{
    Q_OBJECT

public:
    explicit HoverRows(const MainControls& controls, QObject* parent = nullptr);

    /// Puts out all buttons, the list row first; Enter saves no longer.
    void init_ctl_over();

private:
    using Row = std::vector<UsrButton*>;
    void follow_mouse(const Row& row);

    Row list_row_;
    Row player_row_;
};
