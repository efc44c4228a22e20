// How ormel reports failures: one error type carrying the exact message, thrown where the
// failure is found and caught only in main, which writes it and ends with status 2.
#pragma once

#include <stdexcept>
#include <string>

class Error : public std::runtime_error {
 public:
  explicit Error(const std::string& message, std::string file_reason = "")
      : std::runtime_error(message), why(std::move(file_reason)) {}
  // The file and the system's reason behind a message that names neither, as the default
  // messages are ("cannot open products.csv: No such file or directory"); empty when the
  // message says all there is.
  const std::string& reason() const { return why; }

 private:
  std::string why;
};

// Runs act; when explain is set, an Error that has a reason() is thrown again with the
// reason as a line after its message.
template <typename ACT>
auto explained(bool explain, ACT act) -> decltype(act()) {
  try {
    return act();
  } catch (const Error& error) {
    if (!explain || error.reason().empty()) throw;
    throw Error(error.what() + error.reason() + "\n");
  }
}

// Throws an Error whose message is the printf-style format filled with the arguments.
[[noreturn]] void fail(const char* format, ...) __attribute__((format(printf, 1, 2)));

// "%s:%s:memory allocation error\n" with a class label and an operation label.
[[noreturn]] void memallocerr(const char* class_label, const char* operation_label);

// "%s:%s:%s\n" with a class label, an operation label and a message.
[[noreturn]] void aborterr(const char* class_label, const char* operation_label,
                           const char* message);

// The exit status of a run that ended through an Error.
constexpr int kFailureStatus = 2;
