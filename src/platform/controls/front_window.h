#pragma once

class QWidget;

/// The window that a new dialog belongs in front of: the modal one, else the active one, else any that is shown.
/// nullptr when there is none.
QWidget* front_window();
