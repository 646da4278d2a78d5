#include "gui/Text.h"

#include <utility>

namespace gui {

Text::Text(DeviceBacking& deviceBacking) : backing(deviceBacking), bitmap(deviceBacking)
{
    backing.AddListener(*this);
}

Text::~Text() { backing.RemoveListener(*this); }

void Text::CopyFrom(const Text& other, std::string string)
{
    const ScopedUpdate batch(*this);
    Bold.assign(other.Bold.value());
    Color.assign(other.Color.value());
    FontName.assign(other.FontName.value());
    Italic.assign(other.Italic.value());
    LineStyle.assign(other.LineStyle.value());
    MaxWidth.assign(other.MaxWidth.value());
    Size.assign(other.Size.value());
    String.assign(std::move(string));
    Underline.assign(other.Underline.value());
    Alignment.assign(other.Alignment.value());
}

void Text::Invalidate()
{
    cacheState = CacheState::Stale;
    bitmap.SetSize(0.0f, 0.0f);
}

enum Text::LineStyle Text::EffectiveStyle() const
{
    return MaxWidth.value() > 0.0f ? LineStyle.value() : LineStyle::Single;
}

}  // namespace gui
