#pragma once

#include <QColor>

/// The least contrast of a text and its ground.
constexpr double least_contrast = 4.5;

/// How light a colour is to the eye, from 0 for black to 1 for white.
double luminance(const QColor& colour);

/// The contrast of two colours, from 1 for the same to 21 for black and white.
double contrast(const QColor& one, const QColor& other);
