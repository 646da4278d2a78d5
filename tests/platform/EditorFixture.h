#pragma once

#include "TestHost.h"
#include "TestLoop.h"
#include "gui/Control.h"
#include "platform/X11Control.h"
#include "platform/X11Interface.h"
#include "support/VirtualDisplay.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

/// A control that paints one colour and writes down what happens to it.
class RecordingControl : public gui::Control {
public:
    using Control::Control;
    struct Event {
        std::string what;
        int number;  // a button, a key, or nothing
        gui::Point point;
        int flags;
    };

    bool Has(const std::string& what) const { return Find(what) != nullptr; }
    const Event* Find(const std::string& what) const
    {
        for (const Event& event : events)
            if (event.what == what)
                return &event;
        return nullptr;
    }
    int Count(const std::string& what) const
    {
        int count = 0;
        for (const Event& event : events)
            count += event.what == what;
        return count;
    }

    void MouseDown(int pressed, gui::Point point, int heldFlags) override
    {
        events.push_back({heldFlags & 64 ? "double" : "down", pressed, point, heldFlags});
        Control::MouseDown(pressed, point, heldFlags);
    }
    void MouseUp(int pressed, gui::Point point, int heldFlags) override
    {
        events.push_back({"up", pressed, point, heldFlags});
        Control::MouseUp(pressed, point, heldFlags);
    }
    void MouseEntered() override { events.push_back({"enter", 0, {}, 0}); }
    void MouseLeft() override { events.push_back({"leave", 0, {}, 0}); }
    bool WheelDelta(gui::Point, int heldFlags, float delta, gui::Orientation axis) override
    {
        const bool vertical = axis == gui::Orientation::Vertical;
        events.push_back({vertical ? "wheel" : "sideways", 0, {delta, delta}, heldFlags});
        return true;
    }
    bool KeyPressed(int keyCode, int character, int heldFlags) override
    {
        events.push_back({"key", keyCode == gui::KeyCode::character ? character : -keyCode, {}, heldFlags});
        return takesKeys;
    }

    std::vector<Event> events;
    bool takesKeys = true;
};

/// An editor of 200 x 100 units in a host's window at (100, 50) of the screen.
class EditorFixture : public testing::Test {
protected:
    static void SetUpTestSuite() { display = std::make_unique<VirtualDisplay>(); }
    static void TearDownTestSuite() { display.reset(); }

    void SetUp() override
    {
        ASSERT_TRUE(display->IsRunning()) << "Xvfb doesn't start";
        host = std::make_unique<TestHost>();
        host->Move(790, 590);
    }

    void Open(float scale = 1.0f, TestLoop::Offers offers = TestLoop::Offers::Descriptors)
    {
        loop = std::make_unique<TestLoop>(offers);
        gui::X11Interface::Options options;
        options.parent = host->Window();
        options.size = {200.0f, 100.0f};
        options.scale = scale;
        ui = gui::X11Interface::Open(*loop, options);
        ASSERT_TRUE(ui);
        control = std::make_unique<RecordingControl>(*ui, &ui->GetRootControl());
        control->BackgroundColor.assign(gui::Color::Rgb(0x204060));
        control->SetSize({200.0f, 100.0f});
        ASSERT_TRUE(loop->RunUntil([this] { return host->Pixel(110, 60) == 0x204060; }));
    }
    void TearDown() override
    {
        control.reset();
        ui.reset();
        loop.reset();
        host.reset();
    }
    bool Until(const std::function<bool()>& condition) { return loop->RunUntil(condition); }

    static inline std::unique_ptr<VirtualDisplay> display;
    std::unique_ptr<TestHost> host;
    std::unique_ptr<TestLoop> loop;
    std::unique_ptr<gui::X11Interface> ui;
    std::unique_ptr<RecordingControl> control;
};
