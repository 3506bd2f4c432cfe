#pragma once

/// Errors in the command line, each with its fixed message.

#include <stdexcept>
#include <string>

/// Base of the command-line errors. `what()` returns the message.
class SyncDomainConsoleException : public std::runtime_error {
 public:
  explicit SyncDomainConsoleException(const char* message) : std::runtime_error(message) {}

  /// A second text. Reserved and always empty.
  std::string detail;
};
static_assert(sizeof(SyncDomainConsoleException) ==
                  sizeof(std::runtime_error) + sizeof(std::string),
              "Other code is compiled against this layout.");

// clang-format off

/// Nothing follows the program name.
class NoCmdException : public SyncDomainConsoleException {
 public:
  explicit NoCmdException(
      const char* message =
          "No command specified; type \"orskapp help\" to list available commands.")
      : SyncDomainConsoleException(message) {}
};

/// The first word is not a command.
class InvalidCmdException : public SyncDomainConsoleException {
 public:
  explicit InvalidCmdException(
      const char* message =
          "Invalid command specified; type \"orskapp help\" to list available commands.")
      : SyncDomainConsoleException(message) {}
};

/// A command that requires an argument has none.
class MissingArgException : public SyncDomainConsoleException {
 public:
  explicit MissingArgException(const char* message =
                                   "Missing argument to specified command; type \"orskapp help "
                                   "[command]\" for list of valid arguments and options.")
      : SyncDomainConsoleException(message) {}
};

/// An argument is unknown, or belongs to another command.
class InvalidArgException : public SyncDomainConsoleException {
 public:
  explicit InvalidArgException(const char* message =
                                   "Invalid argument to specified command; type \"orskapp help "
                                   "[command]\" for list of valid arguments and options.")
      : SyncDomainConsoleException(message) {}
};

/// A required option is missing.
class MissingOptionException : public SyncDomainConsoleException {
 public:
  explicit MissingOptionException(const char* message =
                                      "Missing option to specified command; type \"orskapp help "
                                      "[command]\" for list of valid arguments and options.")
      : SyncDomainConsoleException(message) {}
};

/// An option occurs more than once.
class TooManyOptionsException : public SyncDomainConsoleException {
 public:
  explicit TooManyOptionsException(
      const char* message =
          "Too many options provided for specified command; type \"orskapp help [command]\" for "
          "list of valid arguments and options.")
      : SyncDomainConsoleException(message) {}
};

// clang-format on
