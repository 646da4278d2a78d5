#include "gui/Bitmap.h"

namespace gui {

void Bitmap::DrawCurves(const CurveStyle&, const Rect&, const Rect&, Point, int, int) {}
void Bitmap::DrawCurveBand(BandMode, const ICurve&, const Rect&, const Rect&, Point, gui::Color, gui::Color,
                           float)
{}
void Bitmap::DrawLine(Point, Point, const Rect&, gui::Color, float) {}

}  // namespace gui
