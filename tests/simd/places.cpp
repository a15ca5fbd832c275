// SPDX-License-Identifier: Apache-2.0
// Operations that move elements or bring several together: shuffles, interleaving, widths, short vectors, totals,
// order.
#include "core/simd/bytes.h"
#include "core/simd/complex.h"
#include "core/simd/convert.h"
#include "core/simd/order.h"
#include "core/simd/short.h"
#include "core/simd/totals.h"
#include "tests/simd/check.h"

namespace vek::VEK_SLOT {
namespace {

// ---- within a pack and between two
// -----------------------------------------------------------------------------------

void shuffles() {
  forIntegers([](auto tag) {
    using T = decltype(tag);
    constexpr int n = Pack<T>::lanes, h = n / 2;
    places<T>(
        "reverse", [](auto a, auto) { return reverse(a); }, [](int k) { return n - 1 - k; });
    places<T>(
        "swapHalves", [](auto a, auto) { return swapHalves(a); }, [](int k) { return (k + h) % n; });
    places<T>(
        "fromHalves", [](auto a, auto b) { return fromHalves<T>(half(a, 1), half(b, 0)); },
        [](int k) { return k < h ? h + k : n + k - h; });
    places<T>(
        "withLowHalf", [](auto a, auto) { return withLowHalf<T>(half(a, 1)); },
        [](int k) { return k < h ? h + k : -1; });
    places<T>(
        "interleave", [](auto a, auto b) { return interleave(a, b); }, [](int k) { return k % 2 * n + k / 2; });
    places<T>(
        "deinterleave", [](auto a, auto b) { return deinterleave(a, b); },
        [](int k) { return 2 * k % (2 * n) + k / n; });
    places<T>(
        "interleaveInHalves", [](auto a, auto b) { return interleaveInHalves(a, b); },
        [](int k) {
          const int upper = k / n, at = k % n, part = at / h;  // the upper half of each 16 bytes is in the second pack
          return at % 2 * n + part * h + upper * h / 2 + at % h / 2;
        });
    if constexpr (sizeof(T) > 1) {
      constexpr int bytes = int(sizeof(T));
      places<uint8_t>(
          "swapBytes", [](auto a, auto) { return bits<uint8_t>(swapBytes(bits<T>(a))); },
          [](int k) { return k / bytes * bytes + bytes - 1 - k % bytes; });
    }
  });
  forTypes<int32_t, float, int64_t, double>([](auto tag) {
    using T = decltype(tag);
    constexpr int n = Pack<T>::lanes;
    places<T>(
        "swapPairs", [](auto a, auto) { return swapPairs(a); }, [](int k) { return k ^ 1; });
    places<T>(
        "dupEven", [](auto a, auto) { return dupEven(a); }, [](int k) { return k & ~1; });
    places<T>(
        "dupOdd", [](auto a, auto) { return dupOdd(a); }, [](int k) { return k | 1; });
    places<T>(
        "repeatEach", [](auto a, auto) { return repeatEach(a); }, [](int k) { return k / 2; });
    places<T>(
        "blendLanes", [](auto a, auto b) { return blendLanes<1>(a, b); }, [](int k) { return k & 1 ? n + k : k; });
    places<T>(
        "blendLanes", [](auto a, auto b) { return blendLanes<2>(a, b); }, [](int k) { return k & 2 ? n + k : k; });
    if constexpr (sizeof(T) == 4) {
      places<T>(
          "shuffle32", [](auto a, auto) { return shuffle32<0x1B>(a); }, [](int k) { return k ^ 3; });
      places<T>(
          "blendLanes", [](auto a, auto b) { return blendLanes<4>(a, b); }, [](int k) { return k & 4 ? n + k : k; });
      places<T>(
          "blendOdd", [](auto a, auto b) { return blendOdd(a, b); }, [](int k) { return k & 1 ? n + k : k; });
      places<T>(
          "loadTwice", [](auto a, auto) { return loadTwice(lanesOf(a).x + 1); }, [](int k) { return 1 + k / 2; });
    }
    // The order is the level's own, but the same for both parts, and every element is there once.
    places<T>(
        "splitPairs",
        [](auto a, auto b) {
          const Two<T> z = splitPairs(a, b);
          return Two<T>{z.b - z.a, interleave(z.a, z.b).a - z.a};
        },
        [](int k) { return k < n ? 1 : -1; });
  });
  places<int16_t>(
      "blendOddWords", [](auto a, auto b) { return blendOddWords(a, b); }, [](int k) { return k & 1 ? 16 + k : k; });
  places<float>(
      "deinterleaveInHalves",
      [](auto a, auto b) {
        const Two<float> z = deinterleaveInHalves(a, b);
        return interleaveInHalves(z.a, z.b);
      },
      [](int k) { return k; });
  places<float>(
      "addNeighbours", [](auto a, auto b) { return addNeighbours(a, b); }, [](int k) { return 4 * k + 1; });
  places<double>(
      "rotateUp", [](auto a, auto) { return rotateUp(a); }, [](int k) { return (k + 3) % 4; });
  places<double>(
      "replaceLowest", [](auto a, auto b) { return replaceLowest(a, b); }, [](int k) { return k == 0 ? 4 : k; });
  places<double>(
      "broadcastLane",
      [](auto a, auto) {
        return Group<double, 4>{{broadcastLane(a, 0), broadcastLane(a, 1), broadcastLane(a, 2), broadcastLane(a, 3)}};
      },
      [](int k) { return k / 4; });
}

void bytes() {
  static constexpr uint8_t order[16] = {3, 128, 15, 0, 7, 7, 255, 1, 2, 4, 6, 8, 10, 12, 14, 129};
  places<uint8_t>(
      "shuffleBytes", [](auto a, auto) { return shuffleBytes(a, order); },
      [](int k) { return order[k % 16] & 128 ? 0 : k / 16 * 16 + order[k % 16]; });
  places<uint8_t>(
      "lookup", [](auto a, auto) { return lookup(order, a & broadcast(uint8_t(15))); },
      [](int k) { return order[k % 16]; });
  places<uint8_t>(
      "unpackBytes", [](auto a, auto b) { return unpackBytes(beforeUnpack(a), beforeUnpack(b)); },
      [](int k) { return k % 2 * 32 + k / 2; });
  places<uint8_t>(
      "packInHalves",
      [](auto a, auto b) {
        const Group<uint16_t, 2> low = widen<uint16_t>(a), high = widen<uint16_t>(b);
        return afterPack(packInHalves<uint8_t>(bits<int16_t>(low.p[1]), bits<int16_t>(high.p[0])));
      },
      [](int k) { return k + 16; });
  places<uint8_t>(
      "triples",
      [](auto a, auto) {
        Lanes<uint8_t> in = lanesOf(a), out = lanesOf(~a);
        storeTriples(out.x + 1, loadTriplesHigh<uint32_t>(in.x + 3) >> 8);
        return load(out.x);
      },
      [](int k) { return k == 0    ? 255
                         : k <= 24 ? k + 2
                                   : 255 - k; });
  if constexpr (kSsse3) {
    binary<int8_t>(
        "withSign", [](auto a, auto b) { return withSign(a, b); },
        [](int8_t a, int8_t b) {
          return int8_t(b < 0 ? -a : b == 0 ? 0 : a);
        });
    binary<int16_t>(
        "mulAddBytes", [](auto a, auto b) { return mulAddBytes(bits<uint8_t>(a), bits<int8_t>(b)); },
        [](int16_t a, int16_t b) {
          const int x = (a & 255) * int8_t(b) + (a >> 8 & 255) * (b >> 8);
          return int16_t(x > 32767 ? 32767 : x < -32768 ? -32768 : x);
        });
  }
}

// ---- widths ---------------------------------------------------------------------------------------------------------

template <class S, class D>
void widening() {
  constexpr int n = Pack<D>::lanes;
  for (int i = 0; i + n <= kValues; ++i) {
    const S* s = values<S>() + i;
    const Lanes<D> got = lanesOf(loadWiden<D>(s));
    for (int k = 0; k < n; ++k) expectLane("loadWiden", patternOf(s[k]), 0, got[k], D(s[k]));
    if constexpr (sizeof(D) == 2 * sizeof(S)) {
      if (i + 2 * n > kValues) continue;
      D both[2 * n];
      storeGroup(both, widen<D>(load(s)));
      for (int k = 0; k < 2 * n; ++k) expectLane("widen", patternOf(s[k]), 0, both[k], D(s[k]));
    }
  }
}

template <class S, class D>
void narrowing() {
  constexpr int n = Pack<D>::lanes;
  const S most = S(kSigned<D> ? UnsignedOf<D>(-1) >> 1 : UnsignedOf<D>(-1)), least = kSigned<D> ? S(-most - 1) : S(0);
  for (int i = 0; i + n <= kValues; ++i) {
    const S* s = values<S>() + i;
    const Pack<S> a = load(s), b = load(s + n / 2);
    const Lanes<D> wrapped = lanesOf(narrowWrapped<D>(a, b));
    for (int k = 0; k < n; ++k) expectLane("narrowWrapped", patternOf(s[k]), 0, wrapped[k], D(s[k]));
    if constexpr (sizeof(S) < 8) {
      const Lanes<D> got = lanesOf(narrowSaturated<D>(a, b));
      const auto clamped = [=](S x) { return D(x > most ? most : x < least ? least : x); };
      for (int k = 0; k < n; ++k) expectLane("narrowSaturated", patternOf(s[k]), 0, got[k], clamped(s[k]));
      if constexpr ((kSame<S, int32_t> && kSigned<D>) || kSame<D, uint8_t>) {
        // Halves of a stand beside halves of b, and interleaving within halves undoes that.
        const Lanes<D> inHalves = lanesOf(narrowInHalves<D>(a, b));
        for (int k = 0; k < n; ++k) {
          const int from = k / (n / 2) * (n / 4) + k % (n / 4) + (k % (n / 2) >= n / 4 ? n / 2 : 0);
          expectLane("narrowInHalves", patternOf(s[from]), 0, inHalves[k], clamped(s[from]));
        }
      }
    }
  }
}

void widths() {
  widening<int8_t, int16_t>(), widening<uint8_t, uint16_t>(), widening<uint8_t, int32_t>(), widening<int8_t, int32_t>();
  widening<int16_t, int32_t>(), widening<uint16_t, int32_t>(), widening<int16_t, int64_t>(),
      widening<int32_t, int64_t>();
  narrowing<int32_t, int16_t>(), narrowing<int32_t, uint16_t>(), narrowing<int16_t, int8_t>();
  narrowing<int16_t, uint8_t>(), narrowing<int64_t, int32_t>();
  for (int i = 0; i + 32 <= kValues; ++i) {
    const int32_t* s = values<int32_t>() + i;
    const Lanes<int8_t> got = lanesOf(narrowQuarter<int8_t>(loadGroup<4>(s)));
    for (int k = 0; k < 32; ++k)
      expectLane("narrowQuarter", patternOf(s[k]), 0, got[k], int8_t(s[k] > 127 ? 127 : s[k] < -128 ? -128 : s[k]));
  }
  for (int i = 0; i + 4 <= kValues; ++i) {
    const float* s = values<float>() + i;
    const int32_t* t = values<int32_t>() + i;
    const Lanes<double> x = lanesOf(loadDouble(s)), y = lanesOf(loadDouble(t));
    for (int k = 0; k < 4; ++k) expectLane("loadDouble", 0, 0, x[k], double(s[k]));
    for (int k = 0; k < 4; ++k) expectLane("loadDouble", 0, 0, y[k], double(t[k]));
    float back[2];
    storePair(back, readPair(s));
    for (int k = 0; k < 2; ++k) expectLane("readPair, storePair", 0, 0, back[k], s[k]);
  }
}

// ---- complex --------------------------------------------------------------------------------------------------------

template <class T>
void complexNumbers() {
  constexpr int n = Pack<T>::lanes;
  for (int turn = 0; turn < kValues; turn += 2) {
    for (int i = 0; i < kValues; i += n) {
      const T* a = values<T>() + i;
      T b[n];
      for (int k = 0; k < n; ++k) b[k] = values<T>()[(i + k + turn) % kValues];
      const Lanes<T> sum = lanesOf(addSubtract(load(a), load(b))), product = lanesOf(complexMul(load(a), load(b)));
      const Lanes<T> power = lanesOf(squaredMagnitude(load(a)));
      for (int k = 0; k < n; k += 2) {
        const T re = a[k], im = a[k + 1], u = b[k], v = b[k + 1];
        expectLane("addSubtract", patternOf(re), patternOf(u), sum[k], T(re - u));
        expectLane("addSubtract", patternOf(im), patternOf(v), sum[k + 1], T(im + v));
        expectLane("complexMul", patternOf(re), patternOf(u), product[k], T(T(re * u) - T(im * v)));
        expectLane("complexMul", patternOf(im), patternOf(v), product[k + 1], T(T(re * v) + T(im * u)));
        for (int l = 0; l < 2; ++l)
          expectLane("squaredMagnitude", patternOf(re), patternOf(im), power[k + l], T(re * re + im * im));
      }
    }
  }
}

void splitting() {
  Vek32fc in[8], out[8];
  for (int k = 0; k < 8; ++k) in[k] = {float(k), float(-k)};
  const Two<float> z = loadSplit(in);
  storeJoined(out, z.b, z.a);
  for (int k = 0; k < 8; ++k) {
    expectLane("loadSplit, storeJoined", uint64_t(k), 0, out[k].re, in[k].im);
    expectLane("loadSplit, storeJoined", uint64_t(k), 1, out[k].im, in[k].re);
  }
}

// ---- short vectors between unreadable pages -------------------------------------------------------------------------

struct Bytes3 {
  uint8_t byte[3];
};

// fetch(from, n) and put(to, n), 1 <= n < L, at both ends of their memory; give(k) is the element that comes back.
template <class T, class Through>
void shortCase(const char* name, int n, Through through) {
  for (int front = 0; front < 4; ++front) {
    const int64_t bytes = n * int64_t(sizeof(T));
    uint8_t* const from = simdGuarded(bytes, front & 1);
    uint8_t kept[128 * sizeof(T)];
    for (int64_t i = 0; i < bytes; ++i) kept[i] = from[i] = uint8_t(7 * i + 1);
    uint8_t* const room = simdGuarded(bytes + 2, front >> 1);
    // A byte on either side that has to stay; what lies beyond them cannot be touched on one side at least.
    for (int64_t i = 0; i < bytes + 2; ++i) room[i] = 0x5A;
    through(reinterpret_cast<T*>(room + 1), reinterpret_cast<const T*>(from), ptrdiff_t(n));
    bool good = room[0] == 0x5A && room[bytes + 1] == 0x5A;
    for (int64_t i = 0; i < bytes; ++i) good &= room[1 + i] == kept[i] && from[i] == kept[i];
    expectThat(good, name, "", uint64_t(n), sizeof(T));
    through(reinterpret_cast<T*>(simdGuarded(bytes, front >> 1)), reinterpret_cast<const T*>(from), ptrdiff_t(n));
  }
}

template <int L, class T>
void shortBlocks() {
  for (int n = 1; n < L; ++n)
    shortCase<T>("gatherBlock, scatterBlock", n, [](T* to, const T* from, ptrdiff_t count) {
      const Block<T, L> b = gatherBlock<L>(from, count);
      for (int k = 0; k < L; ++k) {  // nothing that the vector does not hold
        bool held = false;
        for (ptrdiff_t i = 0; i < count; ++i) held |= __builtin_memcmp(&b.x[k], from + i, sizeof(T)) == 0;
        expectThat(held, "gatherBlock holds others", "", uint64_t(count), sizeof(T));
      }
      scatterBlock<L>(to, b, count);
    });
}

void shortVectors() {
  forTypes<uint8_t, uint16_t, uint32_t, uint64_t>([](auto tag) {
    using T = decltype(tag);
    constexpr int n = Pack<T>::lanes;
    for (int k = 1; k < n; ++k) {
      shortCase<T>("loadShort, storeShort", k, [](T* to, const T* from, ptrdiff_t count) {
        const ptrdiff_t bytes = count * ptrdiff_t(sizeof(T));
        storeShort(to, loadShort(from, bytes), bytes);
      });
      shortCase<T>("loadPart, storePart", k, [](T* to, const T* from, ptrdiff_t count) {
        const Pack<T> x = loadPart(from, count);
        for (ptrdiff_t i = count; i < n; ++i)
          expectThat(lanesOf(x)[int(i)] == 0, "loadPart's zeros", "", uint64_t(count));
        storePart(to, x, count);
      });
    }
    shortBlocks<4, T>();
    shortBlocks<16, T>();
    shortBlocks<32, T>();
  });
  shortBlocks<8, Bytes3>();
  for (int n = 1; n < 80; ++n)
    shortCase<uint8_t>("copyShort", n,
                       [](uint8_t* to, const uint8_t* from, ptrdiff_t count) { copyShort(to, from, count); });
}

// ---- totals and order -----------------------------------------------------------------------------------------------

void totals() {
  // Powers of two sum up exactly in any order, and say which lanes were counted.
  const auto powers = [](auto tag) {
    using T = decltype(tag);
    Pack<T> p[2] = {iota<T>(), iota<T>()};
    alignas(32) T x[2 * Pack<T>::lanes];
    for (int k = 0; k < 2 * Pack<T>::lanes; ++k) x[k] = T(1 << k);
    p[0] = load(x), p[1] = load(x + Pack<T>::lanes);
    const T all = T((1 << 2 * Pack<T>::lanes) - 1);
    expectLane("total(tree)", 0, 0, T(total(tree(p))), all);
    expectLane("total(packTree)", 0, 0, T(total(halvesAdded(packTree(p)))), all);
  };
  forFloats(powers);
  // The order is the same in every slot: of these any other sum differs.
  const float x[8] = {1e8f, 1.0f, -1e8f, 1.0f, 3.0f, 1e-8f, -1.0f, 7.0f};
  const Pack<float> p[1] = {load(x)};
  expectLane("total(tree), in order", 0, 0, total(tree(p)),
             ((x[0] + x[4]) + (x[2] + x[6])) + ((x[1] + x[5]) + (x[3] + x[7])));
  forTypes<int16_t, int32_t, float>([](auto tag) {
    using T = decltype(tag);
    constexpr int n = Pack<T>::lanes;
    for (int k = 0; k < n; ++k) {
      T v[n];
      for (int i = 0; i < n; ++i) v[i] = T(i);
      v[k] = T(100);
      expectLane("outermost", uint64_t(k), 0, outermost<true>(load(v)), T(100));
      v[k] = T(-100);
      expectLane("outermost", uint64_t(k), 0, outermost<false>(load(v)), T(-100));
    }
  });
  const int32_t y[8] = {INT32_MAX, INT32_MAX, 1, 2, -3, 5, 7, 100};
  expectLane("lanesAdded", 0, 0, lanesAdded(load(y)), uint32_t(INT32_MAX) * 2 + 112);
}

// By the zero-one principle: a network that sorts all sequences of zeros and ones sorts everything.
template <int R>
void network() {
  for (int first = 0; first < 1 << R; first += 32) {
    uint8_t in[R][32];
    Pack<uint8_t> v[R];
    for (int r = 0; r < R; ++r) {
      for (int k = 0; k < 32; ++k) in[r][k] = uint8_t((first + k) >> r & 1);
      v[r] = load(in[r]);
    }
    sortAcross(v);
    for (int r = 1; r < R; ++r) expectThat(all(v[r] >= v[r - 1]), "sortAcross", "", R, uint64_t(first));
  }
}

void order() {
  network<2>(), network<4>(), network<8>(), network<16>();
  for (int m = 0; m < 3 * 3 * 3 * 3 * 3; ++m) {
    int8_t x[5];
    int sum[3] = {};
    for (int k = 0, rest = m; k < 5; ++k, rest /= 3) x[k] = int8_t(rest % 3), ++sum[rest % 3];
    const auto pack = [&x](int k) { return broadcast(x[k]); };
    const int8_t five = int8_t(sum[0] >= 3 ? 0 : sum[0] + sum[1] >= 3 ? 1 : 2);
    expectLane("medianOf5", uint64_t(m), 0, lanesOf(medianOf5(pack(0), pack(1), pack(2), pack(3), pack(4)))[0], five);
    const int8_t low = x[0] < x[1] ? x[0] : x[1], high = x[0] < x[1] ? x[1] : x[0];
    expectLane("medianOf3", uint64_t(m), 0, lanesOf(medianOf3(pack(0), pack(1), pack(2)))[0],
               x[2] < low    ? low
               : x[2] > high ? high
                             : x[2]);
  }
  for (int k = 0; k < 32; ++k) {
    const Mask<uint8_t> m = iota<uint8_t>() == broadcast(uint8_t(k));
    expectThat(byteBits(m) == 1u << k && laneBits(m) == 1u << k && any(m) && !all(m) && all(m | ~m) && !any(m & ~m),
               "byteBits", "8u", uint64_t(k));
    if (k < 8) expectThat(laneBits(iota<float>() == broadcast(float(k))) == 1u << k, "laneBits", "32f", uint64_t(k));
    if (k < 4) expectThat(laneBits(iota<double>() == broadcast(double(k))) == 1u << k, "laneBits", "64f", uint64_t(k));
  }
}

}  // namespace

void checkPlaces() {
  shuffles();
  bytes();
  widths();
  complexNumbers<float>();
  complexNumbers<double>();
  splitting();
  shortVectors();
  totals();
  order();
}

}  // namespace vek::VEK_SLOT
