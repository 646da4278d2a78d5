#pragma once

#include "gui/Bitmap.h"
#include "platform/X11Control.h"
#include "platform/X11Surface.h"

#include <memory>

namespace gui {

/// Paints into a bitmap and shows of it what changed.
class NativeX11Control : public X11Control {
public:
    explicit NativeX11Control(X11Interface& ui);
    ~NativeX11Control() override;

    void PaintNow() override;
    void Resized() override;

protected:
    void WindowChanged() override;
    void Exposed(const DeviceRect& part) override;

private:
    Bitmap bitmap;
    std::unique_ptr<X11Surface> surface;
};

}  // namespace gui
