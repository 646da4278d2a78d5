#pragma once

#include "foundation/NotifyEvent.h"
#include "foundation/Property.h"
#include "gui/Bitmap.h"

#include <string>

namespace gui {

/// A piece of text as a picture, measured and rendered on demand. The platform's subclass knows the fonts.
class Text : public PropertyOwner, public DeviceBacking::BackingScaleListener {
public:
    enum class LineStyle {
        Single = 0,
        Ellipsis = 1,  // one line, cut at `MaxWidth` with "…"
        Wrapped = 2,   // wrapped between words at `MaxWidth`
    };

    /// @param deviceBacking  outlives the text
    explicit Text(DeviceBacking& deviceBacking);
    ~Text() override;

    Property<bool> Bold{false, this};
    Property<gui::Color> Color{gui::Color::Black(), this};
    Property<std::string> FontName{std::string(), this};  // empty: the interface's own font
    Property<bool> Italic{false, this};
    Property<Text::LineStyle> LineStyle{Text::LineStyle::Single, this};  // counts with a `MaxWidth` above 0
    Property<float> MaxWidth{0.0f, this};                                // logical units, 0 for any
    Property<float> Size{8.0f, this};                                    // points: 96 / 72 logical units each
    Property<std::string> String{std::string(), this};                   // UTF-8
    Property<bool> Underline{false, this};
    /// How lines of different lengths stand to each other.
    Property<gui::Alignment> Alignment{gui::Alignment::Left, this};
    NotifyEvent OnChanged;

    /// The text in `Color`, valid until the next change.
    virtual const Bitmap& GetBitmap() = 0;
    virtual float GetHeight() = 0;  // logical units, a whole number of device pixels
    /// Logical units to move the text by, so that its letters look centred where its box is.
    virtual float GetBaselineShift() = 0;
    virtual float GetWidth() = 0;

    /// Takes over all properties but the string.
    void CopyFrom(const Text& other, std::string string);

    void BackingScaleChanged() override { Invalidate(); }
    void propertyChanged(AbstractProperty&) override { Invalidate(), changed(); }

protected:
    enum class CacheState { Rendered = 0, Measured = 1, Stale = 2 };

    void update() override { OnChanged.fire(this); }
    /// Empties the picture: measurement and rendering are stale.
    void Invalidate();
    /// The line style in force: without a `MaxWidth` every text is a single line.
    enum LineStyle EffectiveStyle() const;

    DeviceBacking& backing;
    Bitmap bitmap;
    CacheState cacheState = CacheState::Stale;
};

}  // namespace gui
