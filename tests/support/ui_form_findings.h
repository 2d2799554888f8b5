#pragma once

#include "platform/language.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <map>

class QWidget;

/// What is wrong with a form, one line for each fault, and its texts.
struct Findings
{
    QStringList misfits;                   ///< texts that are cut, or painted smaller to fit
    QStringList collisions;                ///< controls that overlap or leave their parent
    QStringList nameless;                  ///< controls that assistive programs can't tell
    QStringList faint;                     ///< texts too close in colour to their ground
    std::multimap<QString, QString> texts; ///< what a person reads or hears, and where
};

/// Looks at a form that is shown, at its size and, where it has others, at its least size and at large ones.
Findings findings_of(QWidget& form);

/// The texts of a form in Korean or German that are English and should not be: those that `is_english` knows, and in
/// Korean those without a Korean letter.
QStringList left_in_english(const Findings& found, Language language,
                            const std::function<bool(const QString& text)>& is_english);
