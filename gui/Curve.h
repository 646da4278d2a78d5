#pragma once

#include "gui/ICanvas.h"

#include <memory>

namespace gui {

/// A curve that several owners may hold.
class Curve : public ICurve, public std::enable_shared_from_this<Curve> {};

}  // namespace gui
