#pragma once

#include <QImage>
#include <string>

namespace vembrix {

/// The contrast of the text in a picture, which shows nothing else on its ground: between the most
/// frequent colour and the one that differs most from it; 1 for an empty one.
double contrastIn(const QImage& picture);

/// Adds a line to contrast.md in the folder of VEMBRIX_PICTURES; does nothing without it.
void noteContrast(const std::string& place, const std::string& text, double contrast);

}  // namespace vembrix
