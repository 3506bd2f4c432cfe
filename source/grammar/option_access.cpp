#include "grammar/option_access.h"

#include <boost/lexical_cast.hpp>
#include <iterator>
#include <type_traits>

#include "errors/console_exceptions.h"

namespace {

const std::string& onlyValue(const std::string& name, const OptionMap& options) {
  const auto [first, end] = options.equal_range(name);
  if (first == end) throw MissingOptionException();
  if (std::next(first) != end) throw TooManyOptionsException();
  return first->second;
}

}  // namespace

template <typename T>
T getOption(const std::string& name, const OptionMap& options) {
  if constexpr (std::is_same_v<T, std::string>) {
    // A text is returned unchanged.
    return onlyValue(name, options);
  } else {
    return boost::lexical_cast<T>(onlyValue(name, options));
  }
}

template std::string getOption<std::string>(const std::string&, const OptionMap&);
template bool getOption<bool>(const std::string&, const OptionMap&);
template std::uint32_t getOption<std::uint32_t>(const std::string&, const OptionMap&);
template std::uint64_t getOption<std::uint64_t>(const std::string&, const OptionMap&);
