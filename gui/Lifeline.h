#pragma once

#include <memory>

namespace gui {

/// A member that tells code which runs handlers whether its object outlived them.
class Lifeline {
public:
    /// Taken before a handler runs, asked after it.
    class Watch {
    public:
        Watch() = default;
        explicit Watch(const Lifeline& lifeline) : token(lifeline.token) {}
        bool IsAlive() const { return !token.expired(); }

    private:
        std::weak_ptr<char> token;
    };

    Lifeline() = default;
    Lifeline(const Lifeline&) = delete;
    Lifeline& operator=(const Lifeline&) = delete;

    Watch GetWatch() const { return Watch(*this); }

private:
    std::shared_ptr<char> token = std::make_shared<char>();
};

}  // namespace gui
