#include "EditorFixture.h"

namespace {

using namespace gui;

// Large enough that the picture goes through the connection in more than one request.
constexpr int width = 700, height = 500;

/// A picture in which no two places near each other are alike.
std::uint32_t colorAt(int x, int y)
{
    const auto cell = static_cast<std::uint32_t>(y / 4 * 64 + x / 20);
    return cell * 0x01F3A7u & 0xFFFFFFu;
}

class Pattern : public Control {
public:
    using Control::Control;
    void PaintContent(Canvas& canvas) override
    {
        for (int y = 0; y < height; y += 4)
            for (int x = 0; x < width; x += 20)
                canvas.FillRect({static_cast<float>(x), static_cast<float>(y), static_cast<float>(x + 20),
                                 static_cast<float>(y + 4)},
                                Color::Rgb(colorAt(x, y)));
    }
};

/// @param depth  with 32 bits a pixel the top ones have to say that nothing shines through
bool isPattern(const std::vector<std::uint32_t>& picture, int depth)
{
    const std::uint32_t opaque = depth == 32 ? 0xFF000000u : 0u;
    std::size_t right = 0;
    while (right < picture.size() &&
           (picture[right] & (opaque | 0xFFFFFF)) ==
               (opaque | colorAt(static_cast<int>(right % width), static_cast<int>(right / width))))
        ++right;
    return right == std::size_t{width} * height;
}

TEST(Surface, EveryWayToTheScreenGivesTheSamePixels)
{
    struct Row {
        const char* screen;
        const char* without;
        TestHost::Shows host;
    };
    for (const Row& row : {Row{"800x600x24", nullptr, TestHost::Shows::Window},
                           Row{"800x600x24", "MIT-SHM", TestHost::Shows::Window},
                           Row{"800x600x24", nullptr, TestHost::Shows::SeeThroughWindow},
                           Row{"800x600x24", "XInputExtension", TestHost::Shows::SeeThroughWindow},
                           // Only see-through windows have all colours here.
                           Row{"800x600x16", nullptr, TestHost::Shows::Window},
                           Row{"800x600x16", "MIT-SHM", TestHost::Shows::Window}}) {
        SCOPED_TRACE(std::string(row.screen) + " without " + (row.without ? row.without : "nothing"));
        const VirtualDisplay display(row.screen, row.without);
        ASSERT_TRUE(display.IsRunning());
        TestHost host(row.host);
        host.MoveWindow(0, 0);
        host.ResizeWindow(width, height);
        TestLoop loop;
        X11Interface::Options options;
        options.parent = host.Window();
        options.size = {float{width}, float{height}};
        options.scale = 1.0f;
        const auto ui = X11Interface::Open(loop, options);
        ASSERT_TRUE(ui);
        const int depth = ui->Connection().WindowVisual().depth;
        EXPECT_EQ(depth, row.screen == std::string("800x600x16") ? 32 : 24);
        EXPECT_EQ(ui->Connection().Has().sharedMemory == 0,
                  row.without && row.without == std::string("MIT-SHM"));
        Pattern pattern(*ui, &ui->GetRootControl());
        pattern.SetSize(options.size);
        EXPECT_TRUE(loop.RunUntil([&] { return isPattern(host.Picture(ui->Window().Window()), depth); }));
    }
}

}  // namespace
