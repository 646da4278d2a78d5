#include "foundation/Lock.h"

#include <mutex>

namespace {

class PosixCriticalSection : public CriticalSection {
protected:
    void enter() override { mutex.lock(); }
    void leave() override { mutex.unlock(); }

private:
    std::recursive_mutex mutex;
};

}  // namespace

std::unique_ptr<CriticalSection> CriticalSection::create()
{
    return std::make_unique<PosixCriticalSection>();
}
