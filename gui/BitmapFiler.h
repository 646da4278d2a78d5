#pragma once

#include <istream>
#include <memory>
#include <span>

namespace gui {

class Bitmap;

/// Reads a picture of one format into a bitmap.
class BitmapFiler {
public:
    virtual ~BitmapFiler() = default;
    /// Reads from the start of the picture. Throws EBitmap, and leaves the bitmap partly filled then.
    virtual void Read(std::istream& stream) = 0;
};

/// Makes filers for one format.
class BitmapFilerFactory {
public:
    virtual ~BitmapFilerFactory() = default;
    /// A filer into `bitmap` if the stream begins like a picture of this format, else null. Moves the stream.
    virtual std::unique_ptr<BitmapFiler> Create(Bitmap& bitmap, std::istream& stream) const = 0;
};

/// The formats that pictures are read in, in the order in which they are tried. Thread: any.
std::span<const BitmapFilerFactory* const> BitmapFilerFactories();

}  // namespace gui
