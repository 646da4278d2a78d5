#include "gui/Light.h"

#include "gui/Bitmap.h"
#include "gui/UserInterface.h"

namespace gui {

namespace {

constexpr int flashMs = 100;  // long enough to be seen, short enough to tell quick events apart

}  // namespace

Light::Style Light::Style::Load(UserInterface& ui)
{
    return {&ui.Bitmaps().Get("LightOn.png"), &ui.Bitmaps().Get("LightOff.png")};
}

Light::Light(UserInterface& ui, Control* parent, const Style& lightStyle)
    : Control(ui, parent), style(lightStyle), timer(ui.CreateTimer())
{
    SetSize(style.off->GetLogicalSize());
    timer->Interval.assign(flashMs);
    timer->OnElapsed.setHandler(NotifyEvent::handler([this](void*) {
        timer->Running.assign(false);
        Value.assign(false);
    }));
}

Light::~Light() = default;

void Light::PaintContent(Canvas& canvas)
{
    Control::PaintContent(canvas);
    canvas.DrawBitmapAt(Value.value() ? *style.on : *style.off, {});
}

void Light::propertyChanged(AbstractProperty& property)
{
    if (&property == &Value) {
        // Put on anew, it stays on for the whole of its time.
        timer->Running.assign(false);
        timer->Running.assign(Value.value());
        Invalidate();
    }
    Control::propertyChanged(property);
}

}  // namespace gui
