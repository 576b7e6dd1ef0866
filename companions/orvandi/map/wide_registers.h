#pragma once

namespace orvandi {

// Before mathematics on many records in a thread that paints: Qt 6.4's fills leave the upper halves of the
// AVX registers in use (they end without VZEROUPPER), and every change between older and newer instructions
// then costs some hundred cycles, so that a logarithm takes ten times as long. Costs a few cycles by itself.
inline void ForgetWideRegisters() {
#if defined(__x86_64__) && defined(__GNUC__)
  static const bool has_avx = __builtin_cpu_supports("avx") != 0;
  if (has_avx) asm volatile("vzeroupper");
#endif
}

}  // namespace orvandi
