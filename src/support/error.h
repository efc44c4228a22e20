// How ormel reports failures: one error type carrying the exact message, thrown where the
// failure is found and caught only in main, which writes it and ends with status 2.
#pragma once

#include <stdexcept>
#include <string>

class Error : public std::runtime_error {
 public:
  explicit Error(const std::string& message) : std::runtime_error(message) {}
};

// Throws an Error whose message is the printf-style format filled with the arguments.
[[noreturn]] void fail(const char* format, ...) __attribute__((format(printf, 1, 2)));

// "%s:%s:memory allocation error\n" with a class label and an operation label.
[[noreturn]] void memallocerr(const char* class_label, const char* operation_label);

// "%s:%s:%s\n" with a class label, an operation label and a message.
[[noreturn]] void aborterr(const char* class_label, const char* operation_label,
                           const char* message);

// The exit status of a run that ended through an Error.
constexpr int kFailureStatus = 2;
