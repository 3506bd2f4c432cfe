#pragma once

/// The JSON documents in which the service library takes its parameters.
///
/// A document is one flat object without blanks. Texts go into it byte for byte, unescaped: what
/// they do to its syntax is between the user and the library.

#include <string>
#include <string_view>

struct ParameterDocument {
  /// The document's type name, which is passed beside it.
  std::string name;
  std::string json;
};

/// The document that names a remote host, for loading and unloading its resources.
ParameterDocument networkDeviceParams(std::string_view remoteHost);
