#pragma once

#include <exception>
#include <string>
#include <string_view>
#include <utility>

#include "platform/RuntimeError.h"

namespace vw {

/// Where an error is caught, as its message names it: "in procedure BackupAll of Class Module
/// CPackage". The texts are literals.
struct Procedure {
    std::wstring_view name;
    std::wstring_view kind;  ///< "Module", "Form" or "Class Module"
    std::wstring_view container;
};

/// Takes the errors that reach the trap of a procedure.
class ErrorSink {
  public:
    ErrorSink() = default;
    ErrorSink(const ErrorSink&) = delete;
    ErrorSink& operator=(const ErrorSink&) = delete;
    virtual ~ErrorSink() = default;

    /// Reports an error to the user and notes it for the exit code.
    virtual void Report(const Procedure& where, const RuntimeError& error) = 0;

    /// From now on only the first `most` errors get a box, and nobody has to answer one after the
    /// other. In a silent run, whose boxes close themselves, nothing changes. See BoxLimit.
    virtual void BeginLimit(int /*most*/) {}
    /// Ends that; returns how many errors were reported meanwhile.
    virtual int EndLimit() { return 0; }
};

/// Limits the boxes of errors while it lives. Within another one it has no effect.
class BoxLimit {
  public:
    BoxLimit(ErrorSink& errors, int most) : errors_(errors) { errors_.BeginLimit(most); }
    ~BoxLimit() {
        if (!ended_) errors_.EndLimit();
    }
    BoxLimit(const BoxLimit&) = delete;
    BoxLimit& operator=(const BoxLimit&) = delete;

    /// Ends the limit; returns how many errors were reported while it lived.
    int End() {
        ended_ = true;
        return errors_.EndLimit();
    }

  private:
    ErrorSink& errors_;
    bool ended_ = false;
};

/// The text of an error's box: number, source line and procedure; then, when there are any, an
/// empty line, the description and the path.
[[nodiscard]] std::wstring ErrorText(const Procedure& where, const RuntimeError& error);

/// What an error means and the path it concerns, a line each; empty when neither is known.
[[nodiscard]] std::wstring ErrorDetails(const RuntimeError& error);

/// Passes the exception being handled to `errors`: a RuntimeError as it is, memory shortage as 7,
/// any other std::exception as 5. Everything else (the end of the program in tests) goes on.
void ReportCurrentError(ErrorSink& errors, const Procedure& where);

/// The error trap around the procedures of one module: reports an error once, under the name of the
/// procedure, and never lets it out. What the body did before the error stays.
class ErrorTrap {
  public:
    /// `kind` and `container` as in Procedure.
    constexpr ErrorTrap(ErrorSink& errors, std::wstring_view kind, std::wstring_view container)
        : errors_(errors), kind_(kind), container_(container) {}

    /// Runs `body`. False when an error ended it.
    template <class Body>
    bool operator()(std::wstring_view procedure, Body&& body) const {
        try {
            std::forward<Body>(body)();
            return true;
        } catch (const std::exception&) {
            ReportCurrentError(errors_, {procedure, kind_, container_});
            return false;
        }
    }

    /// Runs `body` and returns what it returns; `fallback` after an error.
    template <class Result, class Body>
    [[nodiscard]] Result Or(Result fallback, std::wstring_view procedure, Body&& body) const {
        (*this)(procedure, [&] { fallback = std::forward<Body>(body)(); });
        return fallback;
    }

  private:
    ErrorSink& errors_;
    std::wstring_view kind_;
    std::wstring_view container_;
};

}  // namespace vw
