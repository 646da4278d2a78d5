#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

/// An event with one primary handler and any number of further ones. One thread at a time.
class NotifyEvent {
public:
    NotifyEvent() = default;
    ~NotifyEvent();

    class Handler {
    public:
        virtual ~Handler() = default;
        virtual void invoke(void* argument) = 0;
        virtual bool equals(const Handler& other) const = 0;
    };

    /// Calls a member function; equal to another of the same object and member, so that it can be removed.
    template <class T>
    class HandlerImpl : public Handler {
    public:
        using Member = void (T::*)(void* argument);
        HandlerImpl(T& handlerTarget, Member handlerMember) : target(&handlerTarget), member(handlerMember) {}
        void invoke(void* argument) override { (target->*member)(argument); }
        bool equals(const Handler& other) const override
        {
            const auto* same = dynamic_cast<const HandlerImpl*>(&other);
            return same && same->target == target && same->member == member;
        }

    private:
        T* target;
        Member member;
    };

    /// Calls a function object; equal to nothing.
    template <class F>
    class HandlerImplFunc : public Handler {
    public:
        explicit HandlerImplFunc(F handlerFunction) : function(std::move(handlerFunction)) {}
        void invoke(void* argument) override { function(argument); }
        bool equals(const Handler&) const override { return false; }

    private:
        F function;
    };

    template <class T>
    static std::unique_ptr<Handler> handler(T& target, void (T::*member)(void*))
    {
        return std::make_unique<HandlerImpl<T>>(target, member);
    }
    template <class F>
    static std::unique_ptr<Handler> handler(F function)
    {
        return std::make_unique<HandlerImplFunc<F>>(std::move(function));
    }

    /// Replaces the primary handler; null takes it away.
    void setHandler(std::unique_ptr<Handler> newHandler);
    void addHandler(std::unique_ptr<Handler> newHandler);
    /// Removes the handler added last of those that equal `probe`: one only.
    void removeHandler(const Handler& probe);
    /// Calls the primary handler, then the further ones from the last to the first. A handler may remove
    /// itself or others; a removed one isn't called any more. It may also destroy the event, which ends the
    /// firing.
    void fire(void* argument = nullptr);

private:
    using HandlerList = std::vector<std::unique_ptr<Handler>>;

    /// One run of `fire`, on its stack.
    struct Firing {
        Firing* outer;          // of the same event
        bool orphaned = false;  // the event is gone
        HandlerList kept;       // its handlers, which may still be running
    };

    void dropRemoved();

    std::unique_ptr<Handler> primaryHandler;
    HandlerList handlers;
    // Handlers removed while the event fires stay alive, out of the list, until it has fired.
    HandlerList removed;
    Firing* firing = nullptr;  // the innermost
};
