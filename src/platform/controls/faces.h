#pragma once

#include "platform/controls/Picture.h"

#include <QString>

// Faces painted in code where a caption is baked in, so that a language changes the words only.

/// State of a button's face.
enum class FaceState
{
    up,
    down,
    hover
};

/// A button with a caption, cut to fit by a smaller font, never by an ellipsis.
Picture button_face(const QString& caption, FaceState state, QSize size);

/// A button with a sign (an SVG drawing in white) in place of a caption.
Picture sign_face(const QString& resource, FaceState state, QSize size);

/// A label picture: a word on the form's ground.
Picture label_face(const QString& caption, QSize size);
