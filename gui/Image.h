#pragma once

#include "gui/Bitmap.h"
#include "gui/Control.h"
#include "gui/StretchedPieces.h"

#include <memory>

namespace gui {

/// Shows a picture and catches the mouse on its visible pixels alone.
class Image : public Control {
public:
    enum class StretchMode {
        None = 0,    // 1:1 from `Offset`
        Corner = 1,  // the ends stay, the middle is tiled
        Halves = 2,  // each half stays at its end, along the axis that is longer than the picture
    };

    /// The control takes the picture's size.
    /// @param shown  outlives the control
    Image(UserInterface& ui, Control* parent, const Bitmap& shown);
    /// An empty picture of its own, whose size the control follows.
    Image(UserInterface& ui, Control* parent);
    ~Image() override;

    Property<Point> Offset{Point{}, this};  // in the picture, logical units
    Property<float> Corner{0.0f, this};     // the least length of an end, logical units
    Property<Image::StretchMode> StretchMode{Image::StretchMode::None, this};

    /// Shows another picture; the size of the control stays.
    void SetBitmap(const Bitmap& shown);
    const Bitmap& GetBitmap() const { return *bitmap; }
    /// The control's own picture, to be drawn on; null if it shows another's.
    Bitmap* OwnBitmap() { return owned.get(); }

    int GetAlphaAt(Point point) const override;
    void PaintContent(Canvas& canvas) override;
    void propertyChanged(AbstractProperty& property) override;

private:
    Orientation HalvesAxis() const;
    std::vector<StretchedPiece> Pieces(Orientation axis) const;
    void FollowBitmap();

    std::unique_ptr<Bitmap> owned;
    const Bitmap* bitmap;
};

}  // namespace gui
