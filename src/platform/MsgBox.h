#pragma once

#include <QString>

#include <functional>

/// An information icon and one OK button.
constexpr int message_box_information = 64;

/// Shows a modal box with `text`, taken as plain text, and waits for its OK.
void MsgBox(const QString& text, int style, const QString& title);

/// What MsgBox calls: the windows of the program put their box here, tests a double that notes the text.
using MessageBoxAnswerer = std::function<void(const QString& text, int style, const QString& title)>;
void set_message_box(MessageBoxAnswerer answerer);
