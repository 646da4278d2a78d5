#include "parameters/TimeParameterUnits.h"

#include "parameters/NumberText.h"

std::optional<std::string> MsParameterUnit::valueToText(float display) const { return timeText(display); }

double MsParameterUnit::adjustBareNumber(double number, float current, float low, float high) const
{
    const bool meansSeconds = number < low || (current > 1000.0f && number * 1000.0 < high);
    return meansSeconds ? number * 1000.0 : number;
}

std::optional<std::string> SecParameterUnit::valueToText(float display) const
{
    return timeText(display * 1000.0f);
}

double SecParameterUnit::adjustBareNumber(double number, float current, float low, float high) const
{
    const bool meansMilliseconds = number > high || (current < 1.0f && number * 0.001 > low);
    return meansMilliseconds ? number * 0.001 : number;
}
