#include "foundation/FloatingPointScope.h"

#include <gtest/gtest.h>

#include <cfloat>

TEST(FloatingPointScope, FlushesDenormalsInsideAndGivesTheStateBack)
{
    volatile float tiny = FLT_MIN;
    volatile float denormal = FLT_MIN / 4;
    {
        const FloatingPointScope scope;
        EXPECT_EQ(tiny / 4, 0.0f);          // a result
        EXPECT_EQ(denormal * 1e10f, 0.0f);  // an operand
    }
    EXPECT_NE(tiny / 4, 0.0f);
    EXPECT_NE(denormal * 1e10f, 0.0f);
}
