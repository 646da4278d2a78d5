#include "foundation/EventForwarderList.h"
#include "foundation/NotifyEvent.h"
#include "foundation/Property.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

struct CountingOwner : PropertyOwner {
    void propertyChanged(AbstractProperty&) override
    {
        ++changes;
        changed();
    }
    void update() override
    {
        ++updates;
        if (changesItself)
            changed();
    }
    int changes = 0;
    int updates = 0;
    bool changesItself = false;
};

struct Recorder {
    void first(void*) { calls += 'A'; }
    void second(void*) { calls += 'B'; }
    std::string calls;
};

}  // namespace

TEST(Property, TellsItsOwnerOnlyOfARealChange)
{
    CountingOwner owner;
    Property<float> property(1.0f, &owner);
    property.assign(1.0f + 1.0e-7f);  // below the float epsilon
    EXPECT_EQ(owner.changes, 0);
    property.assign(1.5f);
    EXPECT_EQ(owner.changes, 1);
    EXPECT_EQ(property.value(), 1.5f);
}

TEST(LimitedProperty, StaysWithinItsLimitsAndReportsOnce)
{
    CountingOwner owner;
    LimitedProperty<int> property(3, 0, 10, &owner);
    property.assign(99);
    property.assign(50);  // clamps to the same value
    EXPECT_EQ(property.value(), 10);
    EXPECT_EQ(owner.changes, 1);
    property.setLimits(0, 4);
    EXPECT_EQ(property.value(), 4);
    EXPECT_EQ(owner.changes, 2);
}

TEST(DelegatingProperty, ForwardsToItsTarget)
{
    CountingOwner owner;
    Property<int> target(1);
    DelegatingProperty<int, Property<int>> property(target, &owner);
    property.assign(7);
    property.assign(7);
    EXPECT_EQ(target.value(), 7);
    EXPECT_EQ(property.value(), 7);
    EXPECT_EQ(owner.changes, 1);
}

TEST(UpdatedObject, ReportsABatchOnceAndNeverFromWithinItsReport)
{
    CountingOwner owner;
    owner.changesItself = true;
    for (int depth = 0; depth < 3; ++depth)
        owner.beginUpdate();
    for (int i = 0; i < 10; ++i)
        owner.changed();
    owner.endUpdate();
    owner.endUpdate();
    EXPECT_EQ(owner.updates, 0);
    owner.endUpdate();
    EXPECT_EQ(owner.updates, 1);
    {
        const ScopedUpdate nothing(owner);
    }
    EXPECT_EQ(owner.updates, 1);
    owner.changed();
    EXPECT_EQ(owner.updates, 2);
}

TEST(NotifyEvent, CallsThePrimaryHandlerThenTheOthersFromTheLast)
{
    NotifyEvent event;
    Recorder recorder;
    event.addHandler(NotifyEvent::handler(recorder, &Recorder::first));
    event.addHandler(NotifyEvent::handler(recorder, &Recorder::second));
    event.setHandler(NotifyEvent::handler([&](void*) { recorder.calls += 'P'; }));
    event.fire();
    EXPECT_EQ(recorder.calls, "PBA");
}

TEST(NotifyEvent, RemovesOneEqualHandlerAndNoFunctionObject)
{
    NotifyEvent event;
    Recorder recorder;
    const auto probe = NotifyEvent::handler(recorder, &Recorder::first);
    event.addHandler(NotifyEvent::handler(recorder, &Recorder::first));
    event.addHandler(NotifyEvent::handler(recorder, &Recorder::first));
    event.addHandler(NotifyEvent::handler([&](void*) { recorder.calls += 'F'; }));
    event.removeHandler(*NotifyEvent::handler([](void*) {}));
    event.removeHandler(*probe);
    event.fire();
    EXPECT_EQ(recorder.calls, "FA");
}

TEST(NotifyEvent, SurvivesHandlersThatRemoveThemselvesAndOthersWhileItFires)
{
    NotifyEvent event;
    Recorder recorder;
    event.addHandler(NotifyEvent::handler(recorder, &Recorder::first));
    event.addHandler(NotifyEvent::handler(recorder, &Recorder::second));
    event.addHandler(NotifyEvent::handler([&](void*) {
        event.removeHandler(*NotifyEvent::handler(recorder, &Recorder::first));
        recorder.calls += 'R';
    }));
    event.fire();  // the removed one isn't called any more
    EXPECT_EQ(recorder.calls, "RB");
}

TEST(EventForwarderList, MakesEachPendingCallOnceAtTheEndOfTheUpdate)
{
    struct Target : EventForwarderList::Target {
        void forward(std::int64_t argument) override { arguments.push_back(argument); }
        std::vector<std::int64_t> arguments;
    } target;
    EventForwarderList list;
    auto& seven = list.add(target, 7);
    auto& eight = list.add(target, 8);
    {
        const ScopedUpdate update(list);
        list.raise(seven);
        list.raise(eight);
        list.raise(seven);
        EXPECT_TRUE(target.arguments.empty());
    }
    list.raise(eight);
    EXPECT_EQ(target.arguments, (std::vector<std::int64_t>{7, 8, 8}));
}
