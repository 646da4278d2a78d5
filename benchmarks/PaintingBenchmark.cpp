// One page of the editor's size at 200 %, as the software path paints it whole: a background, panels and
// knobs with soft edges, gradients, curves and texts that are rendered already. A frame at 60 Hz has 16.7 ms.
#include "gui/Gradient.h"
#include "platform/FreeTypeText.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>
#include <vector>

namespace {

constexpr gui::Point pageSize{926, 514};

struct Response : gui::ICurve {
    float ValueAt(float x) const override
    {
        const float distance = (x - 200) / 20;
        return 90 - 70 / (1 + distance * distance);
    }
};

/// A disc with a soft edge, nothing around it.
void drawDisc(gui::Bitmap& bitmap)
{
    const gui::BasicPoint<int> size = bitmap.GetSize();
    for (int y = 0; y < size.y; ++y) {
        for (int x = 0; x < size.x; ++x) {
            const float radius = 0.5f * static_cast<float>(size.x);
            const float distance =
                std::hypot(static_cast<float>(x) + 0.5f - radius, static_cast<float>(y) + 0.5f - radius);
            const float cover = std::clamp((radius - distance) / 6.0f, 0.0f, 1.0f);
            bitmap.Pixels()[y * size.x + x] =
                gui::ToPixel({90, 100, 110, static_cast<std::uint8_t>(cover * 255.0f)});
        }
    }
}

struct Page {
    Page()
    {
        backing.SetLevel(4);
        for (gui::Bitmap* bitmap : {&page, &background})
            bitmap->SetSize(pageSize.x, pageSize.y);
        background.FillRect({0, 0, pageSize.x, pageSize.y}, gui::Color::Rgb(0x202428));
        panel.SetSize(440, 150);
        panel.FillRect({0, 0, 440, 150}, gui::Color{60, 64, 70, 200});
        knob.SetSize(64, 64);
        drawDisc(knob);
        ground.AddStop(gui::Color{255, 255, 255, 40}, 0);
        ground.AddStop(gui::Color{255, 255, 255, 0}, 1);
        style.lineColor = gui::Color::Rgb(0xFFB040);
        style.layers.push_back({&response, 140, {255, 176, 64, 120}, {255, 176, 64, 10}});
        for (int i = 0; i < 40; ++i) {
            texts.push_back(std::make_unique<gui::FreeTypeText>(backing));
            texts.back()->String.assign("Feedback Level");
            texts.back()->Color.assign(gui::Color::White());
            texts.back()->GetBitmap();
        }
    }

    void paint()
    {
        gui::Canvas& canvas = page.GetCanvas();
        canvas.DrawBitmapAt(background, {});
        for (int i = 0; i < 6; ++i)
            canvas.DrawBitmapAt(panel, {10.0f + 456.0f * static_cast<float>(i % 2),
                                        10.0f + 165.0f * static_cast<float>(i / 2)});
        canvas.FillGradient(ground, {0, 0, pageSize.x, 40}, gui::Direction::Down, 0, 40, 255);
        for (int i = 0; i < 2; ++i) {
            const gui::Rect display = gui::Rect::At({20.0f + 456.0f * static_cast<float>(i), 15}, {420, 140});
            canvas.DrawCurves(style, display, display, display.Origin(), 0, 255);
        }
        for (int i = 0; i < 40; ++i) {
            const gui::Point place{20.0f + 90.0f * static_cast<float>(i % 10),
                                   180.0f + 80.0f * static_cast<float>(i / 10)};
            canvas.DrawBitmapAt(knob, place, i % 3 == 0 ? 160 : 255);
            canvas.DrawLine(place + gui::Point{32, 32}, place + gui::Point{50, 12},
                            {0, 0, pageSize.x, pageSize.y}, gui::Color::White(), 2);
            canvas.DrawBitmapAt(texts[static_cast<std::size_t>(i)]->GetBitmap(), place + gui::Point{0, 64});
        }
    }

    gui::DeviceBacking backing;
    gui::Bitmap page{backing};
    gui::Bitmap background{backing};
    gui::Bitmap panel{backing};
    gui::Bitmap knob{backing};
    gui::Gradient ground;
    gui::CurveStyle style;
    Response response;
    std::vector<std::unique_ptr<gui::FreeTypeText>> texts;
};

void paintPage(benchmark::State& state)
{
    Page page;
    for (auto _ : state)
        page.paint();
}
BENCHMARK(paintPage)->Unit(benchmark::kMillisecond);

void renderText(benchmark::State& state)
{
    gui::DeviceBacking backing;
    backing.SetLevel(4);
    gui::FreeTypeText text(backing);
    int count = 0;
    for (auto _ : state) {
        text.String.assign("Level " + std::to_string(++count % 100) + " dB");
        benchmark::DoNotOptimize(text.GetBitmap().GetPixels());
    }
}
BENCHMARK(renderText)->Unit(benchmark::kMicrosecond);

}  // namespace
