// Full repaints of the gallery's pages: controls, pictures and texts as the editor has them, at 200 %.
#include "gallery/OffscreenGallery.h"

#include <benchmark/benchmark.h>

namespace {

void galleryPage(benchmark::State& state)
{
    const auto index = static_cast<int>(state.range(0));
    gallery::OffscreenGallery shown(2.0f);
    shown.StillPicture(index);
    gui::Bitmap page(shown.Ui().Backing());
    shown.PaintWhole(page);
    for (auto _ : state)
        shown.PaintWhole(page);
    state.SetLabel(gallery::Gallery::PageNames()[static_cast<std::size_t>(index)]);
}
BENCHMARK(galleryPage)->DenseRange(0, 8)->Unit(benchmark::kMillisecond);

}  // namespace
