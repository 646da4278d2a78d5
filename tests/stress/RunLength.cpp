#include "stress/RunLength.h"

#include "clap_host/NumberText.h"

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <random>

namespace {

std::optional<double> numberSet(const char* name)
{
    const char* text = std::getenv(name);
    return text ? parseNumber(text) : std::nullopt;
}

}  // namespace

double secondsToRun(double quick) { return numberSet("SORDELIN_SECONDS").value_or(quick); }

std::uint32_t seedToRun()
{
    const std::uint32_t usual = numberSet("SORDELIN_SECONDS") ? std::random_device()() : 1u;
    const auto set = numberSet("SORDELIN_SEED");
    const std::uint32_t seed = set ? static_cast<std::uint32_t>(*set) : usual;
    std::printf("SORDELIN_SEED=%u\n", seed);
    std::fflush(stdout);
    return seed;
}
