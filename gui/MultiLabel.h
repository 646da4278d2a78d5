#pragma once

#include "gui/AnimatedControl.h"
#include "gui/Text.h"

#include <memory>
#include <string>
#include <vector>

namespace gui {

class Bitmap;

/// Where a stack of lines stands in its height.
enum class Layout { Top = 0, Centre = 1, Bottom = 2 };

/// Lines of text above each other, on a picture if it is given one. An empty line takes no room. The lines of
/// one that is wrapped are aligned as the label is.
class MultiLabel : public AnimatedControl {
public:
    /// @param lineAnimator  null for none
    MultiLabel(UserInterface& ui, Control* parent, Animator* lineAnimator, int lineCount);
    ~MultiLabel() override;

    Property<gui::Alignment> Alignment{gui::Alignment::Left, this};
    Property<gui::Layout> Layout{gui::Layout::Centre, this};
    /// What each edge is moved inwards by for the lines, logical units.
    Property<Rect> Insets{Rect{}, this};

    /// 0..lines - 1. Its font and colour are set here; the label follows all changes.
    Text& Line(int index) { return *lines[static_cast<std::size_t>(index)]; }
    int LineCount() const { return static_cast<int>(lines.size()); }
    void SetText(int line, const std::string& string) { Line(line).String.assign(string); }
    /// The height that a line takes, which doesn't count for the lines above it: from the label's top.
    float LineTop(int index);

    /// Laid under the lines, stretched by the rule of `DrawBitmapStretched`; null for none.
    /// @param picture  outlives the label
    void SetBackground(const Bitmap* picture, float corner = 0.0f);
    /// What the lines and the insets take.
    Point GetContentSize();

    void PaintContent(Canvas& canvas) override;
    void propertyChanged(AbstractProperty& property) override;

private:
    Rect ContentRect() const;
    float LinesHeight();
    float FirstTop();

    std::vector<std::unique_ptr<Text>> lines;
    const Bitmap* background = nullptr;
    float backgroundCorner = 0.0f;
};

}  // namespace gui
