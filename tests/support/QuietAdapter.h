#pragma once

#include "core/GenericPlugin.h"

/// Stands between a plug-in half and a host that isn't there. Tests take what they look at.
struct QuietAdapter : GenericPlugin::Adapter {
    void sendParameterValue(int, float) override {}
    void beginParameterGesture(int) override {}
    void endParameterGesture(int) override {}
    void latencyChanged() override {}
    void parameterChanged(int) override {}
    void controllerMapChanged() override {}
    void pullDisplayData(bool) override {}
    void stateChanged(GenericPlugin::StateChange) override {}
};
