#pragma once

#include <QStringList>

/// The captions of one menu, each with the mark '&' before the first of its letters that no entry above it has taken: A
/// to Z and digits only, whatever their case. A caption without a free letter has none. A caption's own '&' is doubled,
/// as the toolkit shows it.
QStringList with_mnemonics(const QStringList& captions);

/// The caption that a person reads in a text of `with_mnemonics`.
QString without_mnemonic(const QString& text);
