#pragma once

/// Errors in the command line, each with one fixed message for the user.

#include <stdexcept>
#include <string>

/// Base of the command-line errors; `what()` is the message given at construction.
class SyncDomainConsoleException : public std::runtime_error {
 public:
  explicit SyncDomainConsoleException(const char* message) : std::runtime_error(message) {}

  /// A second text, reserved; empty in every error of this program.
  std::string detail;
};

/// Nothing follows the program name.
class NoCmdException : public SyncDomainConsoleException {
 public:
  using SyncDomainConsoleException::SyncDomainConsoleException;
};

/// The command word is not a command.
class InvalidCmdException : public SyncDomainConsoleException {
 public:
  using SyncDomainConsoleException::SyncDomainConsoleException;
};

/// A command that needs an argument word has none.
class MissingArgException : public SyncDomainConsoleException {
 public:
  using SyncDomainConsoleException::SyncDomainConsoleException;
};

/// An argument word is unknown, or not one of its command's.
class InvalidArgException : public SyncDomainConsoleException {
 public:
  using SyncDomainConsoleException::SyncDomainConsoleException;
};

/// An option that the command reads is absent.
class MissingOptionException : public SyncDomainConsoleException {
 public:
  using SyncDomainConsoleException::SyncDomainConsoleException;
};

/// An option that the command reads is given more than once.
class TooManyOptionsException : public SyncDomainConsoleException {
 public:
  using SyncDomainConsoleException::SyncDomainConsoleException;
};

/// The messages, one for each class.
namespace console_message {

// clang-format off
#define ORSK_SEE_HELP          "type \"orskapp help\" to list available commands."
#define ORSK_SEE_COMMAND_HELP  "type \"orskapp help [command]\" for list of valid arguments and options."

inline constexpr char noCommand[]       = "No command specified; " ORSK_SEE_HELP;
inline constexpr char invalidCommand[]  = "Invalid command specified; " ORSK_SEE_HELP;
inline constexpr char missingArgument[] = "Missing argument to specified command; " ORSK_SEE_COMMAND_HELP;
inline constexpr char invalidArgument[] = "Invalid argument to specified command; " ORSK_SEE_COMMAND_HELP;
inline constexpr char missingOption[]   = "Missing option to specified command; " ORSK_SEE_COMMAND_HELP;
inline constexpr char tooManyOptions[]  = "Too many options provided for specified command; " ORSK_SEE_COMMAND_HELP;

#undef ORSK_SEE_HELP
#undef ORSK_SEE_COMMAND_HELP
// clang-format on

}  // namespace console_message
