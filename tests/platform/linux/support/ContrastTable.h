#pragma once

#include <QImage>
#include <string>

namespace vembrix {

/// Returns the contrast of the text in a picture that shows nothing else on its background: between
/// the most frequent colour and the one that differs most from it; 1 for an empty picture.
double contrastIn(const QImage& picture);

/// Adds a line to contrast.md in the folder of VEMBRIX_PICTURES; does nothing without it.
void noteContrast(const std::string& place, const std::string& text, double contrast);

}  // namespace vembrix
