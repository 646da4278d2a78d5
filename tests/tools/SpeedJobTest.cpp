#include "speed/SpeedJob.h"

#include "render/RenderError.h"
#include "speed/SpeedPatches.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <sstream>

namespace {

std::string contentsOf(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

SpeedOptions glanceInto(const TemporaryFolder& folder)
{
    SpeedOptions options;
    options.folder = folder / "bench";
    options.plugin = SORDELIN_MODULE;
    options.quick = true;
    options.quiet = true;
    return options;
}

/// Times are no test on a machine that others use: only that all was measured, and what no load changes.
TEST(SpeedJob, MeasuresEverythingAndWritesATableAndAChart)
{
    const TemporaryFolder folder;
    const SpeedOptions options = glanceInto(folder);
    std::ostringstream out, messages;
    const SpeedReport report = runSpeedJob(options, out, messages);

    EXPECT_EQ(contentsOf(options.folder / "speed.txt"), out.str());
    EXPECT_EQ(contentsOf(options.folder / "speed.png").substr(1, 3), "PNG");
    ASSERT_EQ(report.patches.size(), speedPatches().size());
    for (const auto* rows : {&report.floors, &report.patches}) {
        for (const SpeedRow& row : *rows) {
            EXPECT_GT(row.figure.least, 0.0) << row.name;
            EXPECT_NE(out.str().find(row.name), std::string::npos) << row.name;
        }
    }
    for (const auto* all : {&report.blocks, &report.matrix}) {
        for (const SpeedSeries& series : *all)
            EXPECT_GE(series.points.size(), 2u) << series.name;
    }
    EXPECT_GT(report.instances.perCore(), 0.0);
#if !defined(SORDELIN_SANITIZED)
    // Two delay lines with six stretches of sound in each are in there at least.
    EXPECT_GT(report.instances.residentMiB, 2.0 * 262144 * sizeof(float) / (1 << 20));
    EXPECT_LT(report.instances.residentMiB, 6.0);
    EXPECT_LT(report.instances.makeMs.figure.least, 50.0);
#endif
}

TEST(SpeedJob, PlaysOnlyThePatchesAskedFor)
{
    const TemporaryFolder folder;
    SpeedOptions options = glanceInto(folder);
    options.only = "MIDI source";
    std::ostringstream out, messages;
    const SpeedReport report = runSpeedJob(options, out, messages);
    ASSERT_EQ(report.patches.size(), 1u);
    EXPECT_EQ(report.patches.front().name, "one MIDI source, filters off");
    EXPECT_FALSE(std::filesystem::exists(options.folder / "speed.png"));
    options.only = "no such patch";
    EXPECT_THROW(runSpeedJob(options, out, messages), RenderError);
}

}  // namespace
