#include "gallery/GalleryPage.h"

#include <cmath>
#include <numbers>

namespace gallery {

namespace {

class Painting : public gui::Control {
public:
    using Paint = std::function<void(gui::Canvas&, const gui::Rect&)>;
    Painting(gui::UserInterface& ui, gui::Control* parent, Paint paintFunction)
        : Control(ui, parent), paint(std::move(paintFunction))
    {
        Enabled.assign(false);
    }
    void PaintContent(gui::Canvas& canvas) override { paint(canvas, GetClientRect()); }

private:
    Paint paint;
};

}  // namespace

GalleryPage::GalleryPage(const PageParts& pageParts, gui::Control* parent)
    : Control(pageParts.ui, parent), parts(pageParts)
{
    Opaque.assign(true);
    SetSize(sheetSize);
}

GalleryPage::~GalleryPage() { Empty(); }

void GalleryPage::Empty()
{
    while (!owned.empty())
        owned.pop_back();
}

void GalleryPage::PaintContent(gui::Canvas& canvas)
{
    canvas.FillRect(GetClientRect(), gui::Palette::display);
}

gui::Button& GalleryPage::AddButton(const gui::Rect& bounds, ButtonLook look, const std::string& text,
                                    std::function<void()> clicked)
{
    gui::Button& made = Add<gui::Button>(parts.ui, this, &parts.animator, &parts.styles.Button(look));
    made.SetBounds(bounds);
    made.SetText(text);
    if (clicked)
        made.OnClick.addHandler(NotifyEvent::handler([clicked = std::move(clicked)](void*) { clicked(); }));
    return made;
}

void GalleryPage::AddCard(const gui::Rect& bounds, const std::string& title, gui::Color ground)
{
    AddPainting(bounds,
                [ground](gui::Canvas& canvas, const gui::Rect& area) { canvas.FillRect(area, ground); });
    Caption& caption = AddText({bounds.left + 10.0f, bounds.top + 6.0f}, title, gui::Alignment::Left, 8.0f,
                               gui::Palette::ink);
    caption.Font().Bold.assign(true);
    caption.Fit();
}

Caption& GalleryPage::AddText(gui::Point at, const std::string& text, gui::Alignment alignment, float points,
                              gui::Color color)
{
    Caption& caption = Add<Caption>(parts.ui, this, text, points, color);
    caption.Place(at, alignment);
    return caption;
}

gui::Control& GalleryPage::AddPainting(const gui::Rect& bounds, Paint paint)
{
    gui::Control& painting = Add<Painting>(parts.ui, this, std::move(paint));
    painting.SetBounds(bounds);
    return painting;
}

Pose& GalleryPage::AddPose(gui::Point at, Pose::Maker maker, Pose::Hand hand, gui::Point handAt)
{
    Pose& pose = Add<Pose>(parts.ui, this, std::move(maker), hand, handAt);
    pose.SetPosition(at);
    return pose;
}

gui::Point PointAround(gui::Point controlSize, float degrees, float radius)
{
    const float angle = degrees * std::numbers::pi_v<float> / 180.0f;
    return {controlSize.x * 0.5f + radius * std::sin(angle), controlSize.y * 0.5f - radius * std::cos(angle)};
}

}  // namespace gallery
