// A chart page saved as a picture file, the extension choosing the format:
// BMP, JPG (quality JPGQuality), PNG, SVG, PDF at the size given, and the two
// metafiles at their fixed frames (WMF 800 x 600 with its placeable header,
// EMF 800 x 600 in a frame of 192 x 144 mm). Every file is written through a
// temporary file and a rename, so a failure leaves an old file whole.
#pragma once

#include <string>

namespace kestrow {

class ChartPage;

// The extensions known, in lower case, without the dot.
bool IsGraphicExtension(const std::string& extension);

// Draws the page and writes it; false with the message on failure: "Invalid
// extension for graphics file", the JPEG texts, or the system's reason.
bool SaveGraphic(ChartPage& page, const std::string& path, int width, int height, std::string& error);

// The picture size of the setting JPGSize (0 the screen's, 1 640 x 480, 2
// 800 x 600, 3 1024 x 768), no dimension above the screen's.
void GraphicSize(int screenWidth, int screenHeight, int& width, int& height);

}  // namespace kestrow
