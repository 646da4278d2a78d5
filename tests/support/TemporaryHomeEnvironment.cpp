// Every program of tests runs in a home of its own: no test may read what its user keeps, or write there.
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

namespace {

class HomeEnvironment : public testing::Environment {
    void SetUp() override { home.emplace(); }
    void TearDown() override { home.reset(); }
    std::optional<TemporaryHome> home;
};

[[maybe_unused]] testing::Environment* const environment =
    testing::AddGlobalTestEnvironment(new HomeEnvironment);

}  // namespace
