#pragma once

/// Errors in the command line, each with its one message for the user.

#include <stdexcept>
#include <string>

/// Base of the command-line errors; `what()` is the message given at construction.
class SyncDomainConsoleException : public std::runtime_error {
 public:
  explicit SyncDomainConsoleException(const char* message) : std::runtime_error(message) {}

  /// A second text, reserved; empty in every error of this program.
  std::string detail;
};

// clang-format off: every message stands on a line of its own, to be found.

/// Nothing follows the program name.
class NoCmdException : public SyncDomainConsoleException {
 public:
  explicit NoCmdException(
      const char* message =
          "No command specified; type \"orskapp help\" to list available commands.")
      : SyncDomainConsoleException(message) {}
};

/// The command word is not a command.
class InvalidCmdException : public SyncDomainConsoleException {
 public:
  explicit InvalidCmdException(
      const char* message =
          "Invalid command specified; type \"orskapp help\" to list available commands.")
      : SyncDomainConsoleException(message) {}
};

/// A command that needs an argument word has none.
class MissingArgException : public SyncDomainConsoleException {
 public:
  explicit MissingArgException(const char* message =
                                   "Missing argument to specified command; type \"orskapp help "
                                   "[command]\" for list of valid arguments and options.")
      : SyncDomainConsoleException(message) {}
};

/// An argument word is unknown, or not one of its command's.
class InvalidArgException : public SyncDomainConsoleException {
 public:
  explicit InvalidArgException(const char* message =
                                   "Invalid argument to specified command; type \"orskapp help "
                                   "[command]\" for list of valid arguments and options.")
      : SyncDomainConsoleException(message) {}
};

/// An option that the command reads is absent.
class MissingOptionException : public SyncDomainConsoleException {
 public:
  explicit MissingOptionException(const char* message =
                                      "Missing option to specified command; type \"orskapp help "
                                      "[command]\" for list of valid arguments and options.")
      : SyncDomainConsoleException(message) {}
};

/// An option that the command reads is given more than once.
class TooManyOptionsException : public SyncDomainConsoleException {
 public:
  explicit TooManyOptionsException(
      const char* message =
          "Too many options provided for specified command; type \"orskapp help [command]\" for "
          "list of valid arguments and options.")
      : SyncDomainConsoleException(message) {}
};

// clang-format on
