#include "gallery/GalleryPage.h"
#include "gui/Image.h"
#include "gui/ImageLabel.h"
#include "gui/Label.h"
#include "gui/Shape.h"

#include <array>
#include <string>

namespace gallery {

namespace {

using gui::Alignment;
using gui::Color;
using gui::Layout;
using gui::Point;
using gui::Rect;

constexpr int dimmed = 96;  // of 255
constexpr const char* darkPlate = "ParameterValueDisplayBackground";

/// A picture of words above each other, as an image label takes it.
class LabelStack {
public:
    static constexpr Point labelSize{60.0f, 18.0f};
    static constexpr int count = 3;

    explicit LabelStack(gui::UserInterface& ui) : words(ui.Platform().CreateText()), picture(ui.Backing())
    {
        words->Size.assign(9.0f);
        words->Color.assign(gui::Palette::ink);
    }
    const gui::Bitmap& Picture() const { return picture; }
    void Draw()
    {
        const std::array<const char*, count> names{"Tape", "Stretch", "Pattern"};
        picture.SetSize(labelSize.x, labelSize.y * static_cast<float>(count));
        float top = 0.0f;
        for (const char* name : names) {
            words->String.assign(name);
            const Point room = labelSize - Point{words->GetWidth(), words->GetHeight()};
            picture.GetCanvas().DrawBitmapAt(words->GetBitmap(), {room.x * 0.5f, top + room.y * 0.5f});
            top += labelSize.y;
        }
    }

private:
    std::unique_ptr<gui::Text> words;
    gui::Bitmap picture;
};

class LabelsPage : public GalleryPage {
public:
    LabelsPage(const PageParts& pageParts, gui::Control* parent)
        : GalleryPage(pageParts, parent), stack(pageParts.ui)
    {
        stack.Draw();
        AddLabels();
        AddWrapped();
        AddStacks();
        AddImages();
        AddShapes();
    }
    ~LabelsPage() override { Empty(); }

    void BackingScaleChanged() override
    {
        stack.Draw();
        GalleryPage::BackingScaleChanged();
    }

private:
    void AddLabels();
    void AddWrapped();
    void AddStacks();
    void AddImages();
    void AddShapes();
    /// A label in a box of its own, so that the place of its text in it shows, or on a picture.
    /// @param plate  null for the box
    template <class T, class... Arguments>
    T& AddBoxed(const Rect& bounds, const char* plate, Arguments&&... arguments)
    {
        if (!plate)
            AddBox(bounds);
        T& made = Add<T>(parts.ui, this, std::forward<Arguments>(arguments)...);
        // The lower edge of a plate is its shadow.
        made.Insets.assign({6.0f, 3.0f, 6.0f, plate ? 5.0f : 3.0f});
        if (plate)
            made.SetBackground(&parts.styles.Picture(plate));
        made.SetBounds(bounds);
        return made;
    }
    static void SetLine(gui::Text& line, const std::string& string, float points, Color color)
    {
        line.Size.assign(points);
        line.Color.assign(color);
        line.String.assign(string);
    }
    void AddBox(const Rect& bounds)
    {
        AddPainting(bounds,
                    [](gui::Canvas& canvas, const Rect& area) { canvas.FillRect(area, gui::Palette::face); });
    }
    gui::Shape& AddShape(const Rect& bounds, Color fill, float border, const gui::Gradient& gradient = {})
    {
        auto& shape = Add<gui::Shape>(parts.ui, this, fill);
        shape.SetBounds(bounds);
        shape.BorderWidth.assign(border);
        shape.BorderColor.assign(gui::Palette::ink);
        shape.FillGradient.assign(gradient);
        return shape;
    }

    LabelStack stack;
};

void LabelsPage::AddLabels()
{
    AddCard({12, 12, 314, 228}, "Labels");
    const char* const names[] = {"Regular", "Bold",      "Underlined", "One line that is cut",
                                 "Dimmed",  "On a plate"};
    for (int row = 0; row < 6; ++row)
        for (int column = 0; column < 3; ++column) {
            const Point at{22.0f + 96.0f * static_cast<float>(column),
                           34.0f + 31.0f * static_cast<float>(row)};
            auto& label = AddBoxed<gui::Label>(Rect::At(at, {90.0f, 24.0f}), row == 5 ? darkPlate : nullptr);
            SetLine(label.GetText(), names[row], 9.0f, row == 5 ? gui::Palette::white : gui::Palette::ink);
            label.Alignment.assign(static_cast<Alignment>(column));
            label.GetText().Bold.assign(row == 1);
            label.GetText().Underline.assign(row == 2);
            label.GetText().LineStyle.assign(gui::Text::LineStyle::Ellipsis);
            label.GetText().MaxWidth.assign(78.0f);
            label.Opacity.assign(row == 4 ? dimmed : 255);
        }
}

void LabelsPage::AddWrapped()
{
    AddCard({326, 12, 914, 228}, "Wrapped");
    const char* const texts[] = {
        "The delay reads its buffer as a tape: the pitch follows every change of the time.",
        "Words go on in the next line where the room ends, and stand in the middle.",
        "Lines that end at the right, as figures do: 350 ms, 62.5 %, −6.0 dB.",
        "Drag to change, with Shift in fine steps. Ctrl brings the default back.",
        "Feedback and cross-feedback of both channels",
        "What can't be used at present is dimmed, and keeps its place."};
    const char* const plates[] = {nullptr, nullptr, nullptr, "HelpHintBackground", darkPlate, nullptr};
    for (int i = 0; i < 6; ++i) {
        const Point at{336.0f + 192.0f * static_cast<float>(i % 3), i < 3 ? 34.0f : 132.0f};
        auto& label = AddBoxed<gui::Label>(Rect::At(at, {182.0f, 86.0f}), plates[i]);
        label.Alignment.assign(static_cast<Alignment>(i % 3));
        label.Layout.assign(i < 3 ? static_cast<Layout>(i) : Layout::Centre);
        SetLine(label.GetText(), texts[i], i < 3 ? 10.0f : 9.0f,
                i == 4 ? gui::Palette::white : gui::Palette::ink);
        if (i == 3)
            label.Insets.assign({10.0f, 6.0f, 35.0f, 8.0f});
        label.GetText().LineStyle.assign(gui::Text::LineStyle::Wrapped);
        const Rect& insets = label.Insets.value();
        label.GetText().MaxWidth.assign(182.0f - insets.left - insets.right);
        label.Opacity.assign(i == 5 ? dimmed : 255);
    }
}

void LabelsPage::AddStacks()
{
    AddCard({12, 240, 314, 444}, "Lines above each other");
    for (int i = 0; i < 6; ++i) {
        const bool onPlate = i >= 3;
        const Point at{22.0f + 96.0f * static_cast<float>(i % 3), onPlate ? 372.0f : 262.0f};
        auto& label = AddBoxed<gui::MultiLabel>(Rect::At(at, {90.0f, onPlate ? 62.0f : 100.0f}),
                                                onPlate ? darkPlate : nullptr, nullptr, 3);
        label.Alignment.assign(static_cast<Alignment>(i % 3));
        label.Layout.assign(onPlate ? Layout::Centre : static_cast<Layout>(i));
        const Color ink = onPlate ? gui::Palette::white : gui::Palette::ink;
        SetLine(label.Line(0), "Feedback", 9.0f, ink);
        label.Line(0).Bold.assign(true);
        SetLine(label.Line(1), i == 4 ? "" : "62.5 %", 14.0f, ink);  // an empty line takes no room
        SetLine(label.Line(2), "by XLFO 1", 7.0f, onPlate ? gui::Palette::shade : gui::Palette::soft);
    }
}

void LabelsPage::AddImages()
{
    AddCard({326, 240, 614, 444}, "Images");
    using gui::Image;
    struct Row {
        const char* picture;
        Rect bounds;
        enum Image::StretchMode mode;
        Point offset;
        int opacity;
    };
    for (const Row& row :
         {Row{"KnobNormalBackNormal", {336, 262, 384, 310}, Image::StretchMode::None, {}, 255},
          Row{"KnobNormalBackNormal", {396, 262, 420, 310}, Image::StretchMode::None, {}, 255},
          Row{"KnobNormalBackNormal", {432, 262, 456, 286}, Image::StretchMode::None, {24, 0}, 255},
          Row{"KnobNormalBackNormal", {468, 262, 516, 310}, Image::StretchMode::None, {}, dimmed},
          Row{"ButtonXYNormal", {528, 262, 604, 310}, Image::StretchMode::Corner, {}, 255},
          Row{"ButtonGenericNormal", {336, 336, 456, 354}, Image::StretchMode::Corner, {}, 255},
          Row{"ButtonDryNormal", {468, 336, 604, 354}, Image::StretchMode::Halves, {}, 255}}) {
        auto& image = Add<Image>(parts.ui, this, parts.styles.Picture(row.picture));
        image.StretchMode.assign(row.mode);
        image.Offset.assign(row.offset);
        image.Opacity.assign(row.opacity);
        image.SetBounds(row.bounds);
    }
    AddText({336, 314}, "Its own size, cut off, from its middle, dimmed", Alignment::Left, 7.0f);
    AddText({604, 314}, "and stretched", Alignment::Right, 7.0f);
    AddText({336, 358}, "Stretched along x", Alignment::Left, 7.0f);
    AddText({468, 358}, "Stretched in halves", Alignment::Left, 7.0f);
    AddText({336, 382}, "The labels of one picture, and none", Alignment::Left, 7.0f);
    for (int i = 0; i <= LabelStack::count; ++i) {
        const Rect bounds = Rect::At({336.0f + 68.0f * static_cast<float>(i), 398.0f}, LabelStack::labelSize);
        AddBox(bounds);
        auto& label = Add<gui::ImageLabel>(parts.ui, this, stack.Picture(), LabelStack::count);
        label.SetPosition(bounds.Origin());
        label.Index.assign(i);
    }
}

void LabelsPage::AddShapes()
{
    AddCard({626, 240, 914, 444}, "Shapes");
    const gui::Gradient gradient(gui::Palette::ivory, gui::Palette::edge);
    const auto cell = [](int column, int row, float width = 48.0f) {
        return Rect::At(
            {636.0f + 55.0f * static_cast<float>(column), 262.0f + 60.0f * static_cast<float>(row)},
            {width, 36.0f});
    };
    const char* const widths[] = {"None", "0.5", "1", "2", "4"};
    const float borders[] = {0.0f, 0.5f, 1.0f, 2.0f, 4.0f};
    const char* const directions[] = {"Left", "Right", "Up", "Down"};
    for (int i = 0; i < 5; ++i) {
        AddShape(cell(i, 0), gui::Palette::shade, borders[i]);
        AddText({cell(i, 0).Middle().x, 300}, widths[i], Alignment::Centre, 7.0f);
    }
    for (int i = 0; i < 4; ++i) {
        AddShape(cell(i, 1), {}, 1.0f, gradient).GradientDirection.assign(static_cast<gui::Direction>(i));
        AddText({cell(i, 1).Middle().x, 360}, directions[i], Alignment::Centre, 7.0f);
    }
    AddShape(cell(4, 1), {}, 1.0f, gradient).Opacity.assign(dimmed);
    AddText({cell(4, 1).Middle().x, 360}, "Dimmed", Alignment::Centre, 7.0f);
    AddShape(cell(0, 2), {}, 1.0f, gradient).GradientType.assign(gui::Shape::GradientType::Radial);
    AddShape(cell(1, 2, 103.0f), {}, 1.0f, gradient).GradientType.assign(gui::Shape::GradientType::Radial);
    AddText({cell(0, 2).left, 420}, "From the middle", Alignment::Left, 7.0f);
    AddShape(cell(3, 2), {}, 2.0f);
    AddText({cell(3, 2).Middle().x, 420}, "Border", Alignment::Centre, 7.0f);
    AddShape(cell(4, 2), gui::Palette::ink, 0.0f).Opacity.assign(dimmed);
    AddText({cell(4, 2).Middle().x, 420}, "Dimmed", Alignment::Centre, 7.0f);
}

}  // namespace

std::unique_ptr<GalleryPage> MakeLabelsPage(const PageParts& parts, gui::Control* parent)
{
    return std::make_unique<LabelsPage>(parts, parent);
}

}  // namespace gallery
