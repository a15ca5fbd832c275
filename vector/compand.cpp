// SPDX-License-Identifier: Apache-2.0
// Companding by G.711. Where bytes can be shuffled, codes are taken apart into nibbles that index 16-entry tables in
// registers; elsewhere the tables are in memory. Encoding reads segment and mantissa off the floating-point format.
#include "core/simd/bytes.h"
#include "core/simd/map.h"
#include "core/simd/scale.h"
#include "vector/compand_tables.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

template <class T, int N>
struct Table {
  alignas(16) T x[N];
};

// ---- decoding -------------------------------------------------------------------------------------------------------

enum class Law { kA, kMu };

template <Law L>
struct Decoder {
  static constexpr int inversion = L == Law::kA ? kALawInversion : kMuLawInversion;

  static constexpr int value(int code) {
    const int bare = (code ^ inversion) & 127;
    const int m = L == Law::kA ? aLawMagnitude(bare) : muLawMagnitude(bare);
    return code & 128 ? m : -m;
  }
  static constexpr Table<int16_t, 256> values() {
    Table<int16_t, 256> t{};
    for (int c = 0; c < 256; ++c) t.x[c] = int16_t(value(c));
    return t;
  }

  // A magnitude is a product of what the upper nibble says and what the lower one says, taken for pairs of bytes:
  // A-law (2 f)(2 s) + (2 f)(2 s) with f the power of two of the segment and s = step, plus 32 but in segment 0;
  // mu-law f s - 33, to be multiplied by 4. The sign is given to the signed factors, s and -1.
  static constexpr Table<uint8_t, 16> powers() {
    Table<uint8_t, 16> t{};
    for (int n = 0; n < 16; ++n) {
      const int segment = (n ^ inversion >> 4) & 7;
      t.x[n] = uint8_t(L == Law::kMu ? 1 << segment : 2 << (segment == 0 ? 0 : segment - 1));
    }
    return t;
  }
  static constexpr Table<uint8_t, 16> steps() {
    Table<uint8_t, 16> t{};
    for (int n = 0; n < 16; ++n) {
      const int step = 2 * ((n ^ inversion) & 15) + 1;
      t.x[n] = uint8_t(L == Law::kMu ? step + 32 : 2 * step);
    }
    return t;
  }
  static constexpr Table<uint8_t, 16> offsets() {  // twice 32 but in segment 0
    Table<uint8_t, 16> t{};
    for (int n = 0; n < 16; ++n) t.x[n] = ((n ^ inversion >> 4) & 7) == 0 ? 0 : 64;
    return t;
  }
};
template <Law L>
struct Tables {
  static constexpr Table<int16_t, 256> values = Decoder<L>::values();
  static constexpr Table<uint8_t, 16> powers = Decoder<L>::powers();
  static constexpr Table<uint8_t, 16> steps = Decoder<L>::steps();
  static constexpr Table<uint8_t, 16> offsets = Decoder<L>::offsets();
};

// By memory table; the array may lie at any address.
template <class D, class F>
VEK_INLINE void lookUpEach(D* dst, int len, const uint8_t* src, F f) {
  for (int i = 0; i < len; ++i) {
    const D x = f(src[i]);
    __builtin_memcpy(dst + i, &x, sizeof x);
  }
}

// 32 codes to 32 values.
template <Law L>
VEK_INLINE Group<int16_t, 2> decodePack(Pack<uint8_t> codes) {
  const Pack<uint8_t> c = beforeUnpack(codes), low = broadcast(uint8_t(15));
  const Pack<uint8_t> upper = bits<uint8_t>(bits<uint16_t>(c) >> 4) & low;
  const Pack<uint8_t> power = lookup(Tables<L>::powers.x, upper);
  Pack<uint8_t> step = lookup(Tables<L>::steps.x, c & low);
  // No code compares as zero once its lowest bit is set, so every step gets a sign: minus that of the code.
  const Pack<int8_t> sign = bits<int8_t>(c | broadcast(uint8_t(1)));
  if constexpr (L == Law::kA) {
    step = step | lookup(Tables<L>::offsets.x, upper);
    const Pack<int8_t> s = withSign(zeros<int8_t>() - bits<int8_t>(step), sign);
    const Two<uint8_t> powers = unpackBytes(power, power), factors = unpackBytes(bits<uint8_t>(s), bits<uint8_t>(s));
    return {{mulAddBytes(powers.a, bits<int8_t>(factors.a)), mulAddBytes(powers.b, bits<int8_t>(factors.b))}};
  } else {
    const Pack<int8_t> s = withSign(zeros<int8_t>() - bits<int8_t>(step), sign);
    const Pack<int8_t> one = withSign(broadcast(int8_t(1)), sign);
    const Two<uint8_t> powers = unpackBytes(power, broadcast(uint8_t(33)));
    const Two<uint8_t> factors = unpackBytes(bits<uint8_t>(s), bits<uint8_t>(one));
    return {{mulAddBytes(powers.a, bits<int8_t>(factors.a)) << 2, mulAddBytes(powers.b, bits<int8_t>(factors.b)) << 2}};
  }
}

template <Law L>
VEK_INLINE VekStatus decode16(const uint8_t* src, int16_t* dst, int len) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  if constexpr (kSsse3) {
    sweep<32>([](int16_t* d, const uint8_t* c) VEK_LAMBDA { storeGroup(d, decodePack<L>(load(c))); }, dst, len, src);
  } else {
    lookUpEach(dst, len, src, [](uint8_t c) VEK_LAMBDA { return Tables<L>::values.x[c]; });
  }
  return vekStsNoErr;
}

template <Law L>
VEK_INLINE VekStatus decodeFloat(const uint8_t* src, float* dst, int len) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  constexpr float unit = 1.0f / 32768;
  if constexpr (kSsse3) {
    sweep<32>(
        [](float* d, const uint8_t* c) VEK_LAMBDA {
          const Group<int16_t, 2> v = decodePack<L>(load(c));
          const Group<int32_t, 2> first = widen<int32_t>(v.p[0]), last = widen<int32_t>(v.p[1]);
          const Pack<float> m = broadcast(unit);
          storeGroup(d, Group<float, 4>{{toFloat(first.p[0]) * m, toFloat(first.p[1]) * m, toFloat(last.p[0]) * m,
                                         toFloat(last.p[1]) * m}});
        },
        dst, len, src);
  } else {
    lookUpEach(dst, len, src, [](uint8_t c) VEK_LAMBDA { return float(Tables<L>::values.x[c]) * unit; });
  }
  return vekStsNoErr;
}

// ---- encoding -------------------------------------------------------------------------------------------------------

// 16 * floor(log2 x) plus the four bits below the leading one, of 16 integers 128 <= x < 32768, read off their floats.
// An odd word is converted with the even one behind it, as a fraction: rounding stops at that one's zero sign bit.
VEK_INLINE Pack<int16_t> logarithms(Pack<int16_t> x) {
  const Pack<int32_t> pairs = bits<int32_t>(x);
  const Pack<int32_t> even = bits<int32_t>(toFloat(pairs & broadcast(0xFFFF)));
  const Pack<int32_t> odd = bits<int32_t>(toFloat(pairs));
  const Pack<int16_t> exponents = blendOddWords(bits<int16_t>(bits<uint32_t>(even) >> 16), bits<int16_t>(odd)) >> 3;
  return exponents - bits<int16_t>(broadcast(16 * 127 | 16 * (127 + 16) << 16));
}

// Seven bits of code without inversion. The linear segments of A-law come out of the smaller of a line and the
// logarithm, which is kept above the line below the second segment. Mu-law's offset of 33 makes it logarithmic all
// over; the saturating addition is the limit of its range.
template <Law L>
VEK_INLINE Pack<int16_t> encodeMagnitude(Pack<int16_t> x) {
  const Pack<int16_t> m = x ^ (x >> 15);
  const Pack<int16_t> first = broadcast(int16_t(16 * 7));
  if constexpr (L == Law::kA) {
    return minOf(m >> 4, logarithms(maxOf(m, broadcast(int16_t(256)))) - first);
  } else {
    return logarithms(addSaturated(m, broadcast(int16_t(132)))) - first;
  }
}

template <Law L>
VEK_INLINE Pack<uint8_t> encodePack(Pack<int16_t> a, Pack<int16_t> b) {
  const Pack<uint8_t> magnitude = packInHalves<uint8_t>(encodeMagnitude<L>(a), encodeMagnitude<L>(b));
  const Pack<uint8_t> sign = packInHalves<int8_t>(a, b) & broadcast(uint8_t(0x80));
  constexpr uint8_t inversion = 0x80 | (L == Law::kA ? kALawInversion : kMuLawInversion);
  return afterPack((magnitude | sign) ^ broadcast(inversion));
}

template <Law L>
VEK_INLINE VekStatus encode16(const int16_t* src, uint8_t* dst, int len) {
  return sweepChecked<32>(
      [](uint8_t* d, const int16_t* x) VEK_LAMBDA { store(d, encodePack<L>(load(x), load(x + 16))); }, dst, len, src);
}

VEK_INLINE Pack<int16_t> samples16(const float* x) {
  const auto eight = [](const float* p) VEK_LAMBDA {
    return roundToInt32<vekRoundHalfAway>(limitFor<int16_t>(load(p) * broadcast(32768.0f)));
  };
  return narrowSaturated<int16_t>(eight(x), eight(x + 8));
}

template <Law L>
VEK_INLINE VekStatus encodeFloat(const float* src, uint8_t* dst, int len) {
  return sweepChecked<32>([](uint8_t* d, const float* x)
                              VEK_LAMBDA { store(d, encodePack<L>(samples16(x), samples16(x + 16))); },
                          dst, len, src);
}

// ---- transcoding ----------------------------------------------------------------------------------------------------

// With sign and inversion taken off, either table is a chain of straight pieces of slope 1 joined by short ones of
// slope 2 or 1/2, no more than one joint in any 16 entries: the upper nibble says which pieces meet there.
struct Joints {
  uint8_t offset[16], bend[16];
};
constexpr Joints kALawJoints = {{8, 8, 4, 2, 1, 0, 0, 0}, {255, 39, 51, 65, 255, 255, 255, 255}};
constexpr Joints kMuLawJoints = {{16, 8, 4, 2, 1, 0, 0, 0}, {0, 0, 40, 51, 0, 81, 0, 0}};

template <Law From>
VEK_INLINE Pack<uint8_t> otherIndex(Pack<uint8_t> x, Pack<uint8_t> row) {
  if constexpr (From == Law::kA) {
    const Pack<uint8_t> straight = x + lookup(kALawJoints.offset, row);
    const Pack<uint8_t> halved = averageUp(x, lookup(kALawJoints.bend, row));
    return minOf(minOf(straight, halved), x + x + broadcast(uint8_t(1)));
  } else {
    const Pack<uint8_t> straight = subSaturated(x, lookup(kMuLawJoints.offset, row));
    const Pack<uint8_t> doubled = subSaturated(x + x, lookup(kMuLawJoints.bend, row));
    return maxOf(minOf(straight, doubled), x - averageUp(x, zeros<uint8_t>()));
  }
}

template <Law From>
VEK_INLINE Pack<uint8_t> transcodePack(Pack<uint8_t> codes) {
  constexpr uint8_t in = From == Law::kA ? kALawInversion : kMuLawInversion;
  const Pack<uint8_t> index = (codes & broadcast(uint8_t(127))) ^ broadcast(in);
  const Pack<uint8_t> row = bits<uint8_t>(bits<uint16_t>(index) >> 4) & broadcast(uint8_t(15));
  return otherIndex<From>(index, row) ^ (codes ^ index) ^ broadcast(uint8_t(kALawInversion ^ kMuLawInversion));
}

template <Law From>
VEK_INLINE VekStatus transcode(const uint8_t* src, uint8_t* dst, int len) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  if constexpr (kSsse3) {
    mapPacks([](Pack<uint8_t> c) VEK_LAMBDA { return transcodePack<From>(c); }, dst, len, src);
  } else {
    const uint8_t* table = From == Law::kA ? kALawToMuLaw : kMuLawToALaw;
    for (int i = 0; i < len; ++i) dst[i] = uint8_t(table[src[i] & 127] | (src[i] & 128));
  }
  return vekStsNoErr;
}

}  // namespace

VekStatus veksALawToLin_8u16s(const Vek8u* pSrc, Vek16s* pDst, int len) { return decode16<Law::kA>(pSrc, pDst, len); }
VekStatus veksALawToLin_8u32f(const Vek8u* pSrc, Vek32f* pDst, int len) {
  return decodeFloat<Law::kA>(pSrc, pDst, len);
}
VekStatus veksMuLawToLin_8u16s(const Vek8u* pSrc, Vek16s* pDst, int len) { return decode16<Law::kMu>(pSrc, pDst, len); }
VekStatus veksMuLawToLin_8u32f(const Vek8u* pSrc, Vek32f* pDst, int len) {
  return decodeFloat<Law::kMu>(pSrc, pDst, len);
}
VekStatus veksLinToALaw_16s8u(const Vek16s* pSrc, Vek8u* pDst, int len) { return encode16<Law::kA>(pSrc, pDst, len); }
VekStatus veksLinToALaw_32f8u(const Vek32f* pSrc, Vek8u* pDst, int len) {
  return encodeFloat<Law::kA>(pSrc, pDst, len);
}
VekStatus veksLinToMuLaw_16s8u(const Vek16s* pSrc, Vek8u* pDst, int len) { return encode16<Law::kMu>(pSrc, pDst, len); }
VekStatus veksLinToMuLaw_32f8u(const Vek32f* pSrc, Vek8u* pDst, int len) {
  return encodeFloat<Law::kMu>(pSrc, pDst, len);
}
VekStatus veksALawToMuLaw_8u(const Vek8u* pSrc, Vek8u* pDst, int len) { return transcode<Law::kA>(pSrc, pDst, len); }
VekStatus veksMuLawToALaw_8u(const Vek8u* pSrc, Vek8u* pDst, int len) { return transcode<Law::kMu>(pSrc, pDst, len); }

}  // namespace vek::VEK_SLOT
