#pragma once

namespace gui {

class Bitmap;

/// `out` becomes a mix of two pictures of one size. A null one counts as nothing, but not both.
/// @param blend  0 for `from` to 255 for `to`
void CrossfadeBitmaps(Bitmap& out, const Bitmap* from, const Bitmap* to, int blend);

/// `out` becomes `picture`, turned clockwise about its middle, at the same size. What would come to lie
/// outside is lost. As sharp at any angle as the picture itself.
void RotateBitmap(Bitmap& out, const Bitmap& picture, float turns);

}  // namespace gui
