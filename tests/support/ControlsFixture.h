#pragma once

#include "gui/Animator.h"
#include "gui/ValueControl.h"
#include "support/GuiFixture.h"

#include <map>

/// Writes each gesture to a log as name, phase and, for changes, the value.
class RecordingListener : public gui::ValueControlListener {
public:
    explicit RecordingListener(EventLog& eventLog) : log(eventLog) {}

    int GetAllowedChange(gui::ValueControl&, int, int) override { return allowed; }
    void BeginBatch() override { log.push_back("batch"); }
    void ValueGesture(gui::ValueControl& control, gui::GesturePhase phase, int) override
    {
        const std::string& name = names[&control];
        open[&control] += phase == gui::GesturePhase::Begin ? 1 : phase == gui::GesturePhase::End ? -1 : 0;
        if (phase == gui::GesturePhase::Change)
            log.push_back(name + std::to_string(control.Value.value()));
        else
            log.push_back(name + (phase == gui::GesturePhase::Begin ? "(" : ")"));
    }
    void EndBatch() override { log.push_back("batched"); }
    /// Begins less ends, of all controls.
    int OpenGestures() const
    {
        int sum = 0;
        for (const auto& entry : open)
            sum += entry.second;
        return sum;
    }

    int allowed = 0;
    std::map<const gui::ValueControl*, std::string> names;

private:
    EventLog& log;
    std::map<const gui::ValueControl*, int> open;
};

/// An interface with an animator that steps each 10 ms, and a listener for its value controls.
class ControlsFixture : public GuiFixture {
protected:
    ControlsFixture()
    {
        animator.FramesPerSecond.assign(100);
        animator.Enabled.assign(true);
    }

    void listenTo(gui::ValueControl& control, const std::string& name)
    {
        control.SetListener(&listener);
        listener.names[&control] = name;
    }
    /// Lets so much time go by that the next press isn't part of a double-click, nor the next move slow.
    void wait(std::uint32_t ms = 500) { ui->AdvanceTime(ms); }

    gui::Animator animator{*ui};
    RecordingListener listener{log};
};
