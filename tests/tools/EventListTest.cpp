#include "clap_host/EventList.h"
#include "clap_host/EventOutput.h"

#include <gtest/gtest.h>

TEST(EventList, SortsByTimeAndKeepsTheOrderWithinOneTime)
{
    EventList list(2);
    for (const auto& [time, id] : {std::pair{5u, 1u}, {0u, 2u}, {5u, 3u}, {3u, 4u}, {0u, 5u}})
        list.add(parameterEvent(time, id, 0.0));

    const clap_input_events_t* events = list.record();
    std::vector<clap_id> ids;
    for (std::uint32_t i = 0; i < events->size(events); ++i)
        ids.push_back(reinterpret_cast<const clap_event_param_value_t*>(events->get(events, i))->param_id);
    EXPECT_EQ(ids, (std::vector<clap_id>{2, 5, 4, 1, 3}));
    EXPECT_EQ(events->get(events, 5), nullptr);
}

TEST(EventOutput, KeepsWhatFitsAndNoticesDisorder)
{
    EventOutput output(2);
    const clap_output_events_t* events = output.record();
    const ClapEvent late = parameterEvent(9, 1, 0.5);
    const ClapEvent early = parameterEvent(3, 2, 0.25);
    EXPECT_TRUE(events->try_push(events, &late.header));
    EXPECT_TRUE(output.inOrder());
    EXPECT_TRUE(events->try_push(events, &early.header));
    EXPECT_FALSE(output.inOrder());
    EXPECT_FALSE(events->try_push(events, &late.header));
    EXPECT_EQ(output.refused(), 1u);
    ASSERT_EQ(output.events().size(), 2u);
    EXPECT_EQ(output.events()[1].parameter.value, 0.25);
}
