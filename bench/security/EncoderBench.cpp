// The time to encode a password, once for each stored mailbox, and to decode one, once for each message.
#include <benchmark/benchmark.h>

#include "src/security/ComponentSecurity.h"

namespace {

using Platform::String;
using TvEmailServices::ComponentSecurity;

String Password(std::int64_t length) {
  String password;
  for (std::int64_t i = 0; i < length; ++i) password += static_cast<char16_t>(32 + i % 90);
  return password;
}

void Encrypt(benchmark::State& state) {
  const String password = Password(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(ComponentSecurity().Encrypt(password));
}

void Decrypt(benchmark::State& state) {
  const String encoded = ComponentSecurity().Encrypt(Password(state.range(0)));
  for (auto _ : state) {
    String copy = encoded;
    benchmark::DoNotOptimize(ComponentSecurity().Decrypt(copy));
  }
}

BENCHMARK(Encrypt)->Arg(0)->Arg(8)->Arg(21)->Arg(97);
BENCHMARK(Decrypt)->Arg(0)->Arg(8)->Arg(21)->Arg(97);

}  // namespace
