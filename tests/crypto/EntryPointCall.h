#pragma once

#include <tuple>
#include <type_traits>

#include "crypto/VRDCrypto.h"

template <class... Parameters>
int callWith(std::tuple<Parameters...> arguments, VRDCrypto& crypto,
             int (VRDCrypto::*entryPoint)(Parameters...)) {
  return std::apply([&](auto... values) { return (crypto.*entryPoint)(values...); }, arguments);
}

/// Calls with nulls, but for @p error where the entry point takes an error document.
template <class... Parameters>
int callWithNulls(VRDCrypto& crypto, int (VRDCrypto::*entryPoint)(Parameters...), char** error) {
  std::tuple<Parameters...> arguments{};
  auto& last = std::get<sizeof...(Parameters) - 1>(arguments);
  if constexpr (std::is_same_v<decltype(last), char**&>) last = error;
  return callWith(arguments, crypto, entryPoint);
}

/// Calls with 16, 32, ... in its places, whatever their types.
template <class... Parameters>
int callWithValues(VRDCrypto& crypto, int (VRDCrypto::*entryPoint)(Parameters...)) {
  std::tuple<Parameters...> arguments;
  unsigned long value = 0;
  std::apply([&](Parameters&... each) { ((each = (Parameters)(value += 16)), ...); }, arguments);
  return callWith(arguments, crypto, entryPoint);
}
