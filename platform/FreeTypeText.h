#pragma once

#include "gui/Text.h"
#include "platform/TextShaper.h"

#include <memory>
#include <vector>

namespace gui {

/// Text drawn by FreeType. Letters stand at fractions of a pixel along the line, so that a text is as wide at
/// every scale, and on whole pixels across it.
class FreeTypeText : public Text {
public:
    explicit FreeTypeText(DeviceBacking& deviceBacking);

    const Bitmap& GetBitmap() override;
    float GetHeight() override;
    float GetBaselineShift() override;
    float GetWidth() override;

private:
    void Measure();
    void Render();
    void BreakLines(const TextShaper& shaper, float limit);
    /// Where a line starts, device pixels.
    int StartOf(const ShapedLine& line) const;
    DeviceRect UnderlineOf(const ShapedLine& line, const FontFace& face, int start, int baseline) const;
    float PixelsPerEm() const;

    std::shared_ptr<FontLibrary> fonts;
    // All below is valid unless the state is `Stale`, in device pixels.
    std::vector<ShapedLine> lines;
    int overhang = 0;  // of the first letters, left of where the line starts
    int width = 0;
    int ascent = 0;
    int lineHeight = 0;
    float capHeight = 0.0f;  // device pixels
};

}  // namespace gui
