#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// How an operation went.
class IErrorResult {
public:
    virtual ~IErrorResult() = default;
    virtual bool succeeded() const noexcept = 0;
    /// 0 for success.
    virtual std::int32_t code() const noexcept = 0;
    /// What the user reads. Empty for success.
    virtual const std::string& message() const noexcept = 0;
};

/// Takes the failures of an operation.
class ErrorReporter : public IErrorResult {
public:
    static constexpr std::int32_t failure = -1;  // the code of all failures of our own

    /// The first failure counts: what is reported after it is dropped.
    virtual void reportError(std::int32_t errorCode, std::string_view text) = 0;
};

/// The result of an operation that hasn't failed yet. Copies keep what was reported so far.
class ErrorResult : public ErrorReporter {
public:
    ErrorResult() = default;
    ErrorResult(const ErrorResult&) = default;
    ErrorResult& operator=(const ErrorResult&) = default;
    ~ErrorResult() override = default;

    bool succeeded() const noexcept override { return errorCode == 0; }
    std::int32_t code() const noexcept override { return errorCode; }
    const std::string& message() const noexcept override { return text; }
    void reportError(std::int32_t newCode, std::string_view newText) override;

private:
    std::int32_t errorCode = 0;
    std::string text;
};
