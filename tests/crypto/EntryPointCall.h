#pragma once

#include <tuple>
#include <type_traits>

#include "crypto/VRDCrypto.h"

/// Calls with nulls, but for @p error where the entry point takes an error document.
template <class... Parameters>
int callWithNulls(VRDCrypto& crypto, int (VRDCrypto::*entryPoint)(Parameters...), char** error) {
  std::tuple<Parameters...> arguments{};
  auto& last = std::get<sizeof...(Parameters) - 1>(arguments);
  if constexpr (std::is_same_v<decltype(last), char**&>) last = error;
  return std::apply([&](auto... values) { return (crypto.*entryPoint)(values...); }, arguments);
}
