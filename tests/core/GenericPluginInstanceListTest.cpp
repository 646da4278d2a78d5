#include "core/GenericPluginInstanceList.h"

#include "core/NamedPluginInstance.h"

#include <gtest/gtest.h>

#include <atomic>
#include <climits>
#include <memory>
#include <set>
#include <thread>

namespace {

struct Instance : NamedPluginInstance {
    explicit Instance(GenericPluginInstanceList& instanceList, std::string itsTrack = {})
        : track(std::move(itsTrack))
    {
        joinInstances(instanceList);
    }
    ~Instance() override { leaveInstances(); }
    const std::string& productName() const override { return product; }
    int channelLayout() const override { return 1; }
    std::uint32_t pluginCode() const override { return 0; }
    std::uint32_t modificationCount() const override { return 0; }
    const std::string& baseInstanceName() const override { return product; }
    std::string trackName() const override { return track; }
    void instanceNameChanged() override { ++renames; }
    void instanceStateChanged() override { ++stateChanges; }

    std::string product = "Sordelin";
    std::string track;
    int renames = 0;
    int stateChanges = 0;
};

std::vector<std::string> namesOf(const GenericPluginInstanceList& list)
{
    std::vector<std::string> names;
    for (int i = 0; i < list.count(); ++i)
        names.push_back(list.instanceAt(i)->instanceName());
    return names;
}
using Names = std::vector<std::string>;

}  // namespace

TEST(InstanceNames, AreNumberedWhereTheyWouldBeTheSame)
{
    GenericPluginInstanceList list;
    std::vector<std::unique_ptr<Instance>> instances;
    for (int i = 0; i < 11; ++i)
        instances.push_back(std::make_unique<Instance>(list));
    EXPECT_EQ(instances[0]->instanceName(), "Sordelin");
    EXPECT_EQ(instances[2]->instanceName(), "Sordelin (3)");
    EXPECT_EQ(namesOf(list), (Names{"Sordelin", "Sordelin (2)", "Sordelin (3)", "Sordelin (4)",
                                    "Sordelin (5)", "Sordelin (6)", "Sordelin (7)", "Sordelin (8)",
                                    "Sordelin (9)", "Sordelin (10)", "Sordelin (11)"}));
    for (const auto& instance : instances)
        EXPECT_EQ(list.find(instance->instanceName()), instance.get());
    EXPECT_EQ(list.find("sordelin"), nullptr);  // nearly the same isn't the same
    EXPECT_EQ(list.find("Sordelin (02)"), nullptr);

    instances[0]->setInstanceName("Vocals");
    instances[4]->setInstanceName("");  // by itself again: the first free name
    EXPECT_EQ(instances[4]->instanceName(), "Sordelin");
    instances.erase(instances.begin() + 1);
    EXPECT_EQ(Instance(list).instanceName(), "Sordelin (2)");
}

TEST(InstanceNames, GoByTheTrackUntilAUserGivesOne)
{
    GenericPluginInstanceList list;
    Instance drums(list, "Drums"), more(list, "Drums"), plain(list);
    EXPECT_EQ(drums.instanceName(), "Drums");
    EXPECT_EQ(more.instanceName(), "Drums (2)");
    EXPECT_EQ(more.displayName(), "Drums");
    EXPECT_EQ(plain.displayName(), "Sordelin");
    more.track = "Bass";
    more.updateAutoName();
    EXPECT_EQ(more.instanceName(), "Bass");
    more.setInstanceName("Drums");  // a user may give a name twice
    EXPECT_EQ(more.displayName(), "Drums");
    EXPECT_FALSE(more.hasAutoName());
    more.track = "Keys";
    more.updateAutoName();
    EXPECT_EQ(more.instanceName(), "Drums");
    drums.updateAutoName();  // the other one has the name now
    EXPECT_EQ(drums.instanceName(), "Drums (2)");
}

TEST(InstanceNames, AreReportedWhenTheyChangeAndOnlyThen)
{
    GenericPluginInstanceList list;
    Instance instance(list);
    struct Row {
        const char* text;
        int renames, stateChanges;
    };
    instance.renames = 0;
    for (const auto& [text, renames, stateChanges] : {Row{"", 0, 0}, Row{"Sordelin", 0, 1}, Row{"A", 1, 1},
                                                      Row{"A", 0, 0}, Row{"", 1, 1}, Row{"", 0, 0}}) {
        instance.renames = instance.stateChanges = 0;
        instance.setInstanceName(text);
        EXPECT_EQ(instance.renames, renames) << text;
        EXPECT_EQ(instance.stateChanges, stateChanges) << text;
    }
    instance.restoreInstanceName(false, "From the project");
    EXPECT_EQ(instance.instanceName(), "From the project");
    instance.restoreInstanceName(false, "");
    EXPECT_EQ(instance.instanceName(), "From the project");
    instance.restoreInstanceName(true, "Old");
    EXPECT_EQ(instance.instanceName(), "Sordelin");
    EXPECT_EQ(instance.stateChanges, 0);  // the project knows
}

TEST(InstanceGroups, AreNumbersThatNoOtherHas)
{
    GenericPluginInstanceList list;
    Instance first(list), second(list);
    EXPECT_EQ(first.instanceGroup(), -1);
    EXPECT_FALSE(first.hasGroup(-1));
    EXPECT_EQ(first.group(), 0);
    EXPECT_EQ(first.group(), 0);
    EXPECT_EQ(second.group(), 1);
    EXPECT_TRUE(second.hasGroup(1));
    EXPECT_TRUE(list.claimGroup(5));
    EXPECT_EQ(list.newGroup(), 6);
    EXPECT_FALSE(list.claimGroup(1));
    EXPECT_EQ(list.newGroup(), 7);
    for (const int impossible : {-1, -2, INT_MIN, INT_MAX})
        EXPECT_FALSE(list.claimGroup(impossible));

    second.restoreGroup(0);  // a copy within the project
    EXPECT_EQ(second.group(), 1);
    second.restoreGroup(-1);
    EXPECT_EQ(second.group(), 1);
    second.restoreGroup(20);
    EXPECT_EQ(second.group(), 20);
    Instance third(list);
    EXPECT_EQ(third.group(), 21);

    Instance last(list), highest(list), anew(list);
    last.restoreGroup(INT_MAX - 2);
    EXPECT_EQ(highest.group(), INT_MAX - 1);
    EXPECT_EQ(anew.group(), 1);  // from the start, past the one that is taken
    EXPECT_EQ(list.newGroup(), 2);
}

TEST(InstanceList, StandsManyThreads)
{
    GenericPluginInstanceList list;
    std::atomic<bool> unique{true};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 3; ++thread) {
        threads.emplace_back([&list, &unique] {
            for (int round = 0; round < 200; ++round) {
                Instance one(list), two(list);
                one.setInstanceName(round % 2 ? "" : "Mine");
                const ScopedLock lock(list);
                std::set<int> groups{one.group(), two.group()};
                int automatic = 0;
                std::set<std::string> names;
                for (int i = 0; i < list.count(); ++i) {
                    const std::string& name = list.instanceAt(i)->instanceName();
                    if (name == "Mine" || name.empty())
                        continue;
                    ++automatic;
                    names.insert(name);
                }
                if (groups.size() != 2 || names.size() != static_cast<std::size_t>(automatic))
                    unique = false;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_TRUE(unique);
    EXPECT_EQ(list.count(), 0);
}
