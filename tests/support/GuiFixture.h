#pragma once

#include "gui/OffscreenInterface.h"
#include "support/PlainPlatform.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

/// What happened, in order.
using EventLog = std::vector<std::string>;

/// Writes what it is told to a log, each line led by its name.
class ProbeControl : public gui::Control {
public:
    ProbeControl(gui::UserInterface& ui, gui::Control* parent, const gui::Rect& bounds, EventLog& eventLog,
                 std::string probeName = "")
        : Control(ui, parent), name(std::move(probeName)), log(eventLog)
    {
        Bounds.assign(bounds);
    }

    int GetAlphaAt(gui::Point) const override { return alpha; }
    void Clicked() override { told("click"), Control::Clicked(); }
    void SingleClicked() override { told("single"), Control::SingleClicked(); }
    void DoubleClicked() override { told("double"), Control::DoubleClicked(); }
    void RightClicked() override { told("right"), Control::RightClicked(); }
    void MouseEntered() override { told("enter"), Control::MouseEntered(); }
    void MouseLeft() override { told("leave"), Control::MouseLeft(); }
    void CaptureReleased() override { told("released"), Control::CaptureReleased(); }
    void Resized() override { Control::Resized(), ++resizes; }
    bool KeyPressed(int keyCode, int, int) override
    {
        told("key");
        return keyCode == takenKey;
    }
    bool ScrollEvent(int device, ScrollPhase phase, gui::Point point, int inputFlags, gui::Point velocity,
                     gui::Point delta, float magnitude) override
    {
        if (!takesWheel)
            return Control::ScrollEvent(device, phase, point, inputFlags, velocity, delta, magnitude);
        told("scroll" + std::to_string(static_cast<int>(phase)));
        lastVelocity = velocity;
        return true;
    }
    gui::Point LastPosition() const { return position; }
    int Flags() const { return flags; }

    int alpha = 255;
    int takenKey = 0;
    bool takesWheel = false;
    int resizes = 0;
    gui::Point lastVelocity;

private:
    void told(const char* what) { told(std::string(what)); }
    void told(const std::string& what) { log.push_back(name.empty() ? what : name + " " + what); }

    std::string name;
    EventLog& log;
};

/// An interface of 200 by 100, with nothing to be repainted.
class GuiFixture : public testing::Test {
protected:
    GuiFixture() { ui->Paint(); }

    void press(gui::Point point, int flags = 0, int button = 0)
    {
        root().WindowMouseDown(button, point, flags | gui::InputFlags::leftButton);
    }
    void release(gui::Point point, int flags = 0, int button = 0)
    {
        root().WindowMouseUp(button, point, flags);
    }
    void click(gui::Point point, int flags = 0)
    {
        press(point, flags);
        release(point);
    }
    void move(gui::Point point, int flags = 0) { root().WindowMouseMove(point, flags); }
    bool scroll(gui::Point point, gui::Point velocity = {0, 0.1f}, gui::Point delta = {0, 30})
    {
        return root().WindowScroll(point, 0, velocity, delta, 1);
    }
    EventLog takeLog() { return std::exchange(log, {}); }
    gui::RootControl& root() { return ui->GetRootControl(); }

    std::unique_ptr<gui::OffscreenInterface> ui =
        std::make_unique<gui::OffscreenInterface>(std::make_unique<PlainPlatform>(), gui::Point{200, 100});
    EventLog log;
};

/// Runs `work` at each firing of the event.
inline void on(NotifyEvent& event, std::function<void()> work)
{
    event.addHandler(NotifyEvent::handler([work = std::move(work)](void*) { work(); }));
}
