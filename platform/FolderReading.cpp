#include "platform/FolderReading.h"

#include "foundation/ModulePin.h"

#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace gui {

/// What both threads have in common. Who of them is the last frees it.
struct FolderReading::Job {
    std::string folder;
    std::shared_ptr<const FolderLister> lister;
    std::thread thread;

    std::mutex lock;  // guards what follows
    std::condition_variable ended;
    State state = State::Waiting;
    bool givenUp = false;
    std::vector<Entry> entries;

    bool IsOver() const { return state == State::Done || state == State::Missing; }
};

class FolderReading::Reader : public FolderLister::Visitor {
public:
    explicit Reader(std::shared_ptr<Job> sharedJob) : job(std::move(sharedJob)) {}
    virtual ~Reader() = default;

    void operator()()
    {
        try {
            job->lister->list(job->folder, {}, *this);
            // Links come last: they are the likeliest to lead to what doesn't answer.
            const std::vector<std::string> found = std::exchange(links, {});
            for (const std::string& each : found)
                if (SetState(State::Linking))
                    job->lister->follow(job->folder, each, {}, *this);
        } catch (const std::bad_alloc&) {
            // What was read until then stands.
        }
        SetState(entered ? State::Done : State::Missing);
        job->ended.notify_all();
    }

    bool enter(const FolderLister::Identity&) override { return entered = true; }
    bool folder(std::string_view name) override { return Add(name, true); }
    bool file(std::string_view name, std::uint64_t) override { return Add(name, false); }
    bool link(std::string_view name) override
    {
        links.emplace_back(name);
        return true;
    }

private:
    /// False if nobody wants to know any more.
    bool Add(std::string_view name, bool isFolder)
    {
        const std::lock_guard guard(job->lock);
        job->entries.push_back({std::string(name), isFolder});
        return !job->givenUp;
    }
    bool SetState(State state)
    {
        const std::lock_guard guard(job->lock);
        job->state = state;
        return !job->givenUp;
    }

    std::shared_ptr<Job> job;
    std::vector<std::string> links;
    bool entered = false;
};

FolderReading::FolderReading(std::string folder, std::shared_ptr<const FolderLister> lister)
    : job(std::make_shared<Job>())
{
    job->folder = std::move(folder);
    job->lister = std::move(lister);
    try {
        job->thread = std::thread(Reader(job));
    } catch (const std::system_error&) {
        Reader read(job);  // no thread to be had: better late than never
        read();
    }
}

FolderReading::~FolderReading()
{
    if (!job->thread.joinable())
        return;
    std::thread thread = std::move(job->thread);
    {
        const std::lock_guard guard(job->lock);
        job->givenUp = true;
        if (!job->IsOver()) {
            pinModule();
            thread.detach();
            return;
        }
    }
    thread.join();
}

FolderReading::State FolderReading::Now() const { return WaitFor(std::chrono::milliseconds(0)); }

FolderReading::State FolderReading::WaitFor(std::chrono::milliseconds patience) const
{
    std::unique_lock guard(job->lock);
    job->ended.wait_for(guard, patience, [this] { return job->IsOver(); });
    return job->state;
}

std::vector<FolderReading::Entry> FolderReading::Entries() const
{
    const std::lock_guard guard(job->lock);
    return job->entries;
}

}  // namespace gui
