#include "foundation/ErrorResult.h"

void ErrorResult::reportError(std::int32_t newCode, std::string_view newText)
{
    if (errorCode != 0)
        return;
    errorCode = newCode;
    text = newText;
}
