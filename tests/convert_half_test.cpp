// SPDX-License-Identifier: Apache-2.0
// Half precision, exhaustively both ways, with and without the conversion instructions of the processor.
#include "tests/support/shapes.h"

namespace {

using namespace vektest;

float fromBits(uint32_t b) {
  float x;
  memcpy(&x, &b, sizeof x);
  return x;
}
uint32_t toBits(float x) {
  uint32_t b;
  memcpy(&b, &x, sizeof b);
  return b;
}

// The value of a half from its definition.
float widened(Vek16f h) {
  const uint32_t sign = uint32_t(h & 0x8000) << 16, fraction = h & 0x3FF;
  const int exponent = h >> 10 & 31;
  if (exponent == 31) return fromBits(sign | 0x7F800000 | fraction << 13);
  const float m = exponent == 0 ? std::ldexp(float(fraction), -24) : std::ldexp(float(fraction + 1024), exponent - 25);
  return fromBits(sign | toBits(m));
}

// The neighbours of a magnitude among the halves decide: the largest half not above it, or the nearer one.
Vek16f narrowed(float x, int mode) {
  const Vek16f sign = Vek16f(toBits(x) >> 16 & 0x8000);
  if (std::isnan(x)) return sign | 0x7DFF;
  const double m = std::fabs(double(x));
  if (std::isinf(x)) return sign | 0x7C00;
  int low = 0, high = 0x7C00;  // half patterns of one sign ascend with their values
  while (high - low > 1) {
    const int middle = (low + high) / 2;
    (double(widened(Vek16f(middle))) <= m ? low : high) = middle;
  }
  if (mode != 1) return Vek16f(sign | low);
  const double below = widened(Vek16f(low)), above = high == 0x7C00 ? 65536.0 : widened(Vek16f(high));
  const bool up = m - below > above - m || (m - below == above - m && low % 2 != 0);
  return Vek16f(sign | (up ? high : low));
}

// This processor with F16C hidden, and AVX2 too if the context says so.
vek::CpuidRegs withoutF16c(const void* hideAvx2, uint32_t leaf, uint32_t subleaf) {
  vek::CpuidRegs r = vek::nativeCpu.cpuid(vek::nativeCpu.context, leaf, subleaf);
  if (leaf == 1) r.ecx &= ~(1u << 29);
  if (leaf == 7 && hideAvx2 != nullptr) r.ebx &= ~(1u << 5);
  return r;
}

// Every slot as it is, then the AVX slots of a processor without F16C.
void onEveryPath(const std::function<void(int)>& f) {
  inEverySlot(f);
  if (availableSlots().back() < 5) return;
  for (const bool hideAvx2 : {false, true}) {
    vek::CpuidSource cpu = vek::nativeCpu;
    cpu.cpuid = withoutF16c;
    cpu.context = hideAvx2 ? &cpu : nullptr;
    vek::initialiseDispatch(cpu);
    ASSERT_FALSE(vek::featuresEnabled(VEK_FEATURE_F16C));
    SCOPED_TRACE(testing::Message() << "slot " << slotName(vek_variant_index) << " without F16C");
    f(vek_variant_index);
  }
  vek::setSlotForTest(availableSlots().back());
}

template <class T>
std::vector<T> all16() {
  std::vector<T> v(65536);
  for (int i = 0; i < 65536; ++i) v[i] = T(i);
  return v;
}

TEST(ConvertHalf, WidensToTheBit) {
  // As patterns: the fractions of signalling NaNs must come through.
  Shapes(all16<Vek16f>())
      .on(onEveryPath)
      .check([](auto* a, Vek32u* d, int n) { return veksConvert_16f32f(a, reinterpret_cast<Vek32f*>(d), n); },
             each([](Vek16f h) { return toBits(widened(h)); }));
}

TEST(ConvertHalf, NarrowsAroundEveryHalf) {
  // Every half, the midpoint to the next and the neighbours of both, of either sign.
  std::vector<Vek32u> patterns;
  for (int h = 0; h <= 0x7C00; ++h) {
    const float x = widened(Vek16f(h)), next = h >= 0x7BFF ? 65536.0f : widened(Vek16f(h + 1));
    for (const float centre : {h == 0x7C00 ? 65536.0f : x, (h == 0x7C00 ? 65536.0f : x) / 2 + next / 2})
      for (int d = -1; d <= 1; ++d)
        if (const uint32_t b = toBits(centre) + uint32_t(d); b < 0x80000000)
          patterns.push_back(b), patterns.push_back(b | 0x80000000);
  }
  for (const float x : floatSweep<float>()) patterns.push_back(toBits(x));
  for (const uint32_t b : {0x7F800000u, 0xFF800000u, 0x7F800001u, 0xFF800001u, 0x7FC00000u, 0xFFFFFFFFu})
    patterns.push_back(b);
  for (const int mode : {0, 1, 3, -1}) {
    SCOPED_TRACE(mode);
    Shapes(patterns)
        .on(onEveryPath)
        .check([=](auto* a, Vek16f* d,
                   int n) { return veksConvert_32f16f(reinterpret_cast<const Vek32f*>(a), d, n, mode); },
               each([=](Vek32u b) { return narrowed(fromBits(b), mode); }));
  }
}

TEST(ConvertHalf, FromAndTo16BitIntegers) {
  for (const int mode : {0, 1, 3, -1}) {
    SCOPED_TRACE(mode);
    Shapes(all16<Vek16s>())
        .on(onEveryPath)
        .check([=](auto* a, Vek16f* d, int n) { return veksConvert_16s16f(a, d, n, mode); },
               each([=](Vek16s x) { return narrowed(float(x), mode); }));
    for (const int s : {0, 1, 3, 10, 140, 149, 150, 1000, INT32_MAX, -1, -10, -24, -127, -128, INT32_MIN}) {
      SCOPED_TRACE(s);
      const float m = std::ldexp(1.0f, s > 1000 ? -1000 : s < -1000 ? 1000 : -s);
      const auto call = [=](auto* a, Vek16s* d, int n) { return veksConvert_16f16s_Sfs(a, d, n, mode, s); };
      const auto meaning = each([=](Vek16f h) {
        const float y = widened(h) * m;
        if (std::isnan(y)) return Vek16s(0);
        const double c = std::min(std::max(double(y), -32768.0), 32767.0);
        return Vek16s(mode == 1 ? std::nearbyint(c) : std::trunc(c));
      });
      auto shapes = Shapes(all16<Vek16f>()).on(onEveryPath);
      s == 1 ? shapes.check(call, meaning) : shapes.values(call, meaning);
    }
  }
}

TEST(ConvertHalf, RefusesHalfAway) {
  const Vek32f single = 1;
  const Vek16s integer = 1;
  const Vek16f half = 0x3C00;
  const auto mode = vekRoundHalfAway;
  expectRefused<Vek16f>(vekStsRoundModeNotSupportedErr,
                        [&](auto* d) { return veksConvert_32f16f(&single, d, 1, mode); });
  expectRefused<Vek16f>(vekStsRoundModeNotSupportedErr,
                        [&](auto* d) { return veksConvert_16s16f(&integer, d, 1, mode); });
  expectRefused<Vek16s>(vekStsRoundModeNotSupportedErr,
                        [&](auto* d) { return veksConvert_16f16s_Sfs(&half, d, 1, mode, 0); });
  expectRefused<Vek16f>(vekStsSizeErr, [&](auto* d) { return veksConvert_32f16f(&single, d, 0, mode); });
  expectRefused<Vek16f>(vekStsNullPtrErr, [&](auto* d) { return veksConvert_32f16f(nullptr, d, 0, mode); });
}

}  // namespace
