#include "foundation/FolderScan.h"

#include "foundation/ModulePin.h"
#include "foundation/Paths.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

using Clock = std::chrono::steady_clock;
using Identity = FolderLister::Identity;

/// What the thread that reads and the one that waits have in common. Who of them is the last frees it.
struct FolderScan::Job {
    std::string path;
    std::string extension;
    std::vector<std::string> blocked;  // paths not to look at
    bool rootOnly = false;             // asks whether the root is there, no more
    Clock::time_point lastEntering;    // no folder is opened any more
    Clock::time_point lastReading;     // no entry is taken any more

    std::mutex lock;  // guards what follows
    std::condition_variable wasDone;
    bool done = false;
    bool abandoned = false;   // the tree is gone
    std::string currentPath;  // what may be blocking
    FolderTree tree;
};

namespace {

/// An entry of the tree, which only the lock makes safe to touch.
struct Place {
    std::string path;
    FolderTree* tree;
};

}  // namespace

/// The thread that reads.
class FolderScan::Reader {
public:
    Reader(std::shared_ptr<Job> sharedJob, std::shared_ptr<const FolderLister> folderLister)
        : job(std::move(sharedJob)), lister(std::move(folderLister))
    {}

    void operator()()
    {
        try {
            readFolder({job->path, &job->tree});
        } catch (const std::bad_alloc&) {
            // What was read until then stands.
        }
        const std::lock_guard guard(job->lock);
        job->done = true;
        job->wasDone.notify_all();
    }

private:
    /// Keeps what one folder holds.
    class Collector : public FolderLister::Visitor {
    public:
        Collector(Reader& owner, const Place& folderPlace)
            : reader(owner), job(*owner.job), place(folderPlace)
        {}
        virtual ~Collector() = default;

        bool enter(const Identity& identity) override
        {
            auto& open = reader.openFolders;
            if (std::find(open.begin(), open.end(), identity) != open.end())
                return false;  // within itself
            open.push_back(identity);
            entered = true;
            return withTree([](FolderTree& tree) { tree.exists = true; }) && !job.rootOnly;
        }
        bool folder(std::string_view name) override
        {
            return withTree([&](FolderTree& tree) {
                tree.folders.push_back(std::make_unique<FolderTree>());
                tree.folders.back()->name = name;
                folders.push_back(
                    {std::string(place.path).append(name) + pathSeparator, tree.folders.back().get()});
            });
        }
        bool file(std::string_view name, std::uint64_t modificationTime) override
        {
            return withTree([&](FolderTree& tree) {
                tree.files.push_back({std::string(name), modificationTime});
            });
        }
        bool link(std::string_view name) override
        {
            links.emplace_back(name);
            return withTree([](FolderTree&) {});
        }

        void finish()
        {
            withTree([](FolderTree& tree) { tree.answered = true; });
        }

        bool entered = false;
        std::vector<Place> folders;
        std::vector<std::string> links;

    private:
        template <class F>
        bool withTree(F change)
        {
            const std::lock_guard guard(job.lock);
            if (job.abandoned || Clock::now() >= job.lastReading)
                return false;
            change(*place.tree);
            return true;
        }

        Reader& reader;
        Job& job;
        const Place& place;
    };

    /// False if there is no time left for `path`, or it is known to block.
    bool begin(const std::string& path)
    {
        const auto isWithin = [&](const std::string& known) { return path.starts_with(known); };
        if (std::any_of(job->blocked.begin(), job->blocked.end(), isWithin))
            return false;
        const std::lock_guard guard(job->lock);
        // The root itself is read however late the thread got its turn.
        if (job->abandoned || (path != job->path && Clock::now() >= job->lastEntering))
            return false;
        job->currentPath = path;
        return true;
    }

    void readFolder(const Place& place)
    {
        if (!begin(place.path))
            return;
        Collector found(*this, place);
        lister->list(place.path, job->extension, found);
        found.finish();
        for (const Place& folder : found.folders)
            readFolder(folder);
        followLinks(place, found);
        if (found.entered)
            openFolders.pop_back();
    }

    /// Links come last: they are the likeliest to lead to what doesn't answer.
    void followLinks(const Place& place, Collector& found)
    {
        for (const std::string& link : found.links) {
            found.folders.clear();
            if (!begin(place.path + link))
                continue;
            lister->follow(place.path, link, job->extension, found);
            for (const Place& folder : found.folders)
                readFolder(folder);
        }
    }

    std::shared_ptr<Job> job;
    std::shared_ptr<const FolderLister> lister;
    std::vector<Identity> openFolders;  // from the root down to the one in hand
};

FolderScan::FolderScan() : FolderScan(std::make_shared<FolderLister>()) {}

FolderScan::FolderScan(std::shared_ptr<const FolderLister> folderLister) : lister(std::move(folderLister)) {}

FolderScan::~FolderScan() = default;

FolderTree FolderScan::read(const std::string& path, const std::string& extension, Milliseconds budget)
{
    auto job = std::make_shared<Job>();
    job->path = path;
    job->extension = extension;
    return run(std::move(job), budget);
}

bool FolderScan::exists(const std::string& path, Milliseconds budget)
{
    auto job = std::make_shared<Job>();
    job->path = withSeparator(path);
    job->rootOnly = true;
    return run(std::move(job), budget).exists;
}

FolderTree FolderScan::run(std::shared_ptr<Job> job, Milliseconds budget)
{
    job->blocked = blockedPaths();
    job->lastEntering = Clock::now() + budget;
    job->lastReading = job->lastEntering + overtime / 2;  // the rest is for the answer to arrive
    std::thread thread;
    try {
        thread = std::thread(Reader(job, lister));
    } catch (const std::system_error&) {
        Reader(job, lister)();  // no thread to be had: better late than never
        return std::move(job->tree);
    }
    std::unique_lock guard(job->lock);
    if (!job->wasDone.wait_until(guard, job->lastEntering + overtime, [&] { return job->done; })) {
        job->abandoned = true;
        pinModule();
        thread.detach();
        leftBehind.push_back(job);
        return std::move(job->tree);
    }
    guard.unlock();
    thread.join();
    return std::move(job->tree);
}

/// Where threads that were left behind still wait for an answer.
std::vector<std::string> FolderScan::blockedPaths()
{
    std::vector<std::string> paths;
    std::erase_if(leftBehind, [&](const std::shared_ptr<Job>& job) {
        const std::lock_guard guard(job->lock);
        if (!job->done)
            paths.push_back(job->currentPath);
        return job->done;
    });
    return paths;
}
