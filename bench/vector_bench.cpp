// SPDX-License-Identifier: Apache-2.0
// Movement, reordering, logic and shifts against the C library, VOLK and the plain loop.
#include <string.h>

#include "support/rows.h"
#if __has_include(<volk/volk.h>)
#include <volk/volk.h>
#define VEK_HAS_VOLK 1
#else
#define VEK_HAS_VOLK 0
#endif

using namespace vekbench;

namespace {

template <class S, class D, class Call, class Plain>
Contenders pair(size_t n, Call call, Plain plain) {
  const Array<S> s = uniform<S>(n, 1, 100);
  const Array<D> d(n);
  return {{"vek", [=] { call(s.data(), d.data(), int(n)); }}, {"plain", [=] {
                                                                 for (size_t i = 0; i < n; ++i)
                                                                   plain(s.data(), d.data(), i, n);
                                                                 keep(d);
                                                               }}};
}

template <class T, class Call, class Plain>
Contenders triple(size_t n, Call call, Plain plain) {
  const Array<T> a = uniform<T>(n, 1, 100), b = uniform<T>(n, 1, 100), d(n);
  return {{"vek", [=] { call(a.data(), b.data(), d.data(), int(n)); }}, {"plain", [=] {
                                                                           for (size_t i = 0; i < n; ++i)
                                                                             d[i] = plain(a[i], b[i]);
                                                                           keep(d);
                                                                         }}};
}

template <class T>
Array<T> filled(size_t n) {
  Array<T> a(n);
  memset(a.data(), 0x3C, n * sizeof(T));
  return a;
}

void movement() {
  rows("copy_8u", [](size_t n) {
    const Array<Vek8u> s = filled<Vek8u>(n), d(n);
    return Contenders{{"vek", [=] { veksCopy_8u(s.data(), d.data(), int(n)); }},
                      {"memcpy", [=] { memcpy(d.data(), s.data(), n); }}};
  });
  rows("copy_32f", [](size_t n) {
    const Array<Vek32f> s = filled<Vek32f>(n), d(n);
    return Contenders{{"vek", [=] { veksCopy_32f(s.data(), d.data(), int(n)); }},
                      {"memcpy", [=] { memcpy(d.data(), s.data(), 4 * n); }}};
  });
  rows("copy_1u_3to5", [](size_t n) {  // n bits
    const Array<Vek8u> s = filled<Vek8u>(n / 8 + 2), d = filled<Vek8u>(n / 8 + 2);
    return Contenders{{"vek", [=] { veksCopy_1u(s.data(), 3, d.data(), 5, int(n)); }},
                      {"plain", [=] {
                         for (size_t i = 0; i < n; ++i) {
                           const unsigned bit = s[(i + 3) >> 3] >> (7 - ((i + 3) & 7)) & 1, at = 7 - ((i + 5) & 7);
                           d[(i + 5) >> 3] = Vek8u((d[(i + 5) >> 3] & ~(1u << at)) | bit << at);
                         }
                         keep(d);
                       }}};
  });
  rows("move_32f_overlap", [](size_t n) {
    const Array<Vek32f> s = filled<Vek32f>(n + 1);
    return Contenders{{"vek", [=] { veksMove_32f(s.data(), s.data() + 1, int(n)); }},
                      {"memmove", [=] { memmove(s.data() + 1, s.data(), 4 * n); }}};
  });
  rows("zero_32f", [](size_t n) {
    const Array<Vek32f> d(n);
    return Contenders{{"vek", [=] { veksZero_32f(d.data(), int(n)); }},
                      {"memset", [=] { memset(d.data(), 0, 4 * n); }}};
  });
#define VEK_SET_ROW(T, VALUE)                                                                                   \
  rows("set_" #T, [](size_t n) {                                                                                \
    const Array<Vek##T> d(n);                                                                                   \
    return Contenders{{"vek", [=] { veksSet_##T(VALUE, d.data(), int(n)); }}, {"plain", [=] {                   \
                                                                                 const Vek##T v = VALUE;        \
                                                                                 for (size_t i = 0; i < n; ++i) \
                                                                                   d[i] = v;                    \
                                                                                 keep(d);                       \
                                                                               }}};                             \
  })
  VEK_SET_ROW(8u, Vek8u(7));
  VEK_SET_ROW(16s, Vek16s(7));
  VEK_SET_ROW(32f, 7.5f);
  VEK_SET_ROW(32fc, (Vek32fc{1.5f, 2.5f}));
}

void reordering() {
  const auto mirror = [](auto* s, auto* d, size_t i, size_t n) { d[i] = s[n - 1 - i]; };
  rows("flip_8u", [=](size_t n) { return pair<Vek8u, Vek8u>(n, veksFlip_8u, mirror); });
  rows("flip_16u", [=](size_t n) { return pair<Vek16u, Vek16u>(n, veksFlip_16u, mirror); });
  rows("flip_32f", [=](size_t n) { return pair<Vek32f, Vek32f>(n, veksFlip_32f, mirror); });
  rows("swapbytes_16u_I", [](size_t n) {
    const Array<Vek16u> d = filled<Vek16u>(n);
    return Contenders {
      {"vek", [=] { veksSwapBytes_16u_I(d.data(), int(n)); }},
#if VEK_HAS_VOLK
          {"volk", [=] { volk_16u_byteswap(d.data(), unsigned(n)); }},
#endif
      {
        "plain", [=] {
          for (size_t i = 0; i < n; ++i) d[i] = __builtin_bswap16(d[i]);
          keep(d);
        }
      }
    };
  });
  rows("swapbytes_32u_I", [](size_t n) {
    const Array<Vek32u> d = filled<Vek32u>(n);
    return Contenders {
      {"vek", [=] { veksSwapBytes_32u_I(d.data(), int(n)); }},
#if VEK_HAS_VOLK
          {"volk", [=] { volk_32u_byteswap(d.data(), unsigned(n)); }},
#endif
      {
        "plain", [=] {
          for (size_t i = 0; i < n; ++i) d[i] = __builtin_bswap32(d[i]);
          keep(d);
        }
      }
    };
  });
  rows("swapbytes_64u_I", [](size_t n) {
    const Array<Vek64u> d = filled<Vek64u>(n);
    return Contenders {
      {"vek", [=] { veksSwapBytes_64u_I(d.data(), int(n)); }},
#if VEK_HAS_VOLK
          {"volk", [=] { volk_64u_byteswap((uint64_t*)d.data(), unsigned(n)); }},
#endif
      {
        "plain", [=] {
          for (size_t i = 0; i < n; ++i) d[i] = __builtin_bswap64(d[i]);
          keep(d);
        }
      }
    };
  });
  rows("swapbytes_24u", [](size_t n) {
    const Array<Vek8u> s = filled<Vek8u>(3 * n), d(3 * n);
    return Contenders{{"vek", [=] { veksSwapBytes_24u(s.data(), d.data(), int(n)); }},
                      {"plain", [=] {
                         for (size_t i = 0; i < n; ++i)
                           d[3 * i] = s[3 * i + 2], d[3 * i + 1] = s[3 * i + 1], d[3 * i + 2] = s[3 * i];
                         keep(d);
                       }}};
  });
}

struct Complex {
  Array<Vek32fc> a, b;
  Array<Vek32f> re, im;
  explicit Complex(size_t n) : a(filled<Vek32fc>(n)), b(n), re(filled<Vek32f>(n)), im(filled<Vek32f>(n)) {}
};

void complexParts() {
  rows("flip_32fc", [](size_t n) {
    const Complex c(n);
    return Contenders{{"vek", [=] { veksFlip_32fc(c.a.data(), c.b.data(), int(n)); }}, {"plain", [=] {
                                                                                          for (size_t i = 0; i < n; ++i)
                                                                                            c.b[i] = c.a[n - 1 - i];
                                                                                          keep(c.b);
                                                                                        }}};
  });
  rows("conj_32fc", [](size_t n) {
    const Complex c(n);
    return Contenders {
      {"vek", [=] { veksConj_32fc(c.a.data(), c.b.data(), int(n)); }},
#if VEK_HAS_VOLK
          {"volk",
           [=] { volk_32fc_conjugate_32fc((lv_32fc_t*)c.b.data(), (const lv_32fc_t*)c.a.data(), unsigned(n)); }},
#endif
      {
        "plain", [=] {
          for (size_t i = 0; i < n; ++i) c.b[i] = {c.a[i].re, 0.0f - c.a[i].im};
          keep(c.b);
        }
      }
    };
  });
  rows("conjflip_32fc", [](size_t n) {
    const Complex c(n);
    return Contenders{{"vek", [=] { veksConjFlip_32fc(c.a.data(), c.b.data(), int(n)); }},
                      {"plain", [=] {
                         for (size_t i = 0; i < n; ++i) c.b[i] = {c.a[n - 1 - i].re, 0.0f - c.a[n - 1 - i].im};
                         keep(c.b);
                       }}};
  });
  rows("real_32fc", [](size_t n) {
    const Complex c(n);
    return Contenders {
      {"vek", [=] { veksReal_32fc(c.a.data(), c.re.data(), int(n)); }},
#if VEK_HAS_VOLK
          {"volk", [=] { volk_32fc_deinterleave_real_32f(c.re.data(), (const lv_32fc_t*)c.a.data(), unsigned(n)); }},
#endif
      {
        "plain", [=] {
          for (size_t i = 0; i < n; ++i) c.re[i] = c.a[i].re;
          keep(c.re);
        }
      }
    };
  });
  rows("imag_32fc", [](size_t n) {
    const Complex c(n);
    return Contenders {
      {"vek", [=] { veksImag_32fc(c.a.data(), c.im.data(), int(n)); }},
#if VEK_HAS_VOLK
          {"volk", [=] { volk_32fc_deinterleave_imag_32f(c.im.data(), (const lv_32fc_t*)c.a.data(), unsigned(n)); }},
#endif
      {
        "plain", [=] {
          for (size_t i = 0; i < n; ++i) c.im[i] = c.a[i].im;
          keep(c.im);
        }
      }
    };
  });
  rows("cplxtoreal_32fc", [](size_t n) {
    const Complex c(n);
    return Contenders {
      {"vek", [=] { veksCplxToReal_32fc(c.a.data(), c.re.data(), c.im.data(), int(n)); }},
#if VEK_HAS_VOLK
          {"volk",
           [=] { volk_32fc_deinterleave_32f_x2(c.re.data(), c.im.data(), (const lv_32fc_t*)c.a.data(), unsigned(n)); }},
#endif
      {
        "plain", [=] {
          for (size_t i = 0; i < n; ++i) c.re[i] = c.a[i].re, c.im[i] = c.a[i].im;
          keep(c.re), keep(c.im);
        }
      }
    };
  });
  rows("realtocplx_32f", [](size_t n) {
    const Complex c(n);
    return Contenders {
      {"vek", [=] { veksRealToCplx_32f(c.re.data(), c.im.data(), c.b.data(), int(n)); }},
#if VEK_HAS_VOLK
          {"volk", [=] { volk_32f_x2_interleave_32fc((lv_32fc_t*)c.b.data(), c.re.data(), c.im.data(), unsigned(n)); }},
#endif
      {
        "plain", [=] {
          for (size_t i = 0; i < n; ++i) c.b[i] = {c.re[i], c.im[i]};
          keep(c.b);
        }
      }
    };
  });
}

void logic() {
  const auto conjunction = [](auto a, auto b) { return decltype(a)(a & b); };
  rows("and_8u", [=](size_t n) { return triple<Vek8u>(n, veksAnd_8u, conjunction); });
  rows("or_16u", [=](size_t n) { return triple<Vek16u>(n, veksOr_16u, [](auto a, auto b) { return Vek16u(a | b); }); });
  rows("and_32u", [=](size_t n) { return triple<Vek32u>(n, veksAnd_32u, conjunction); });
  rows("xor_32u", [=](size_t n) { return triple<Vek32u>(n, veksXor_32u, [](auto a, auto b) { return a ^ b; }); });
#define VEK_UNARY_ROW(NAME, T, CALL, EXPRESSION)                                          \
  rows(NAME, [](size_t n) {                                                               \
    return pair<Vek##T, Vek##T>(                                                          \
        n, [](const Vek##T* s, Vek##T* d, int len) { CALL; },                             \
        [](const Vek##T* s, Vek##T* d, size_t i, size_t) { d[i] = Vek##T(EXPRESSION); }); \
  })
  VEK_UNARY_ROW("andc_32u", 32u, veksAndC_32u(s, 0xF0F0F0F0u, d, len), s[i] & 0xF0F0F0F0u);
  VEK_UNARY_ROW("not_8u", 8u, veksNot_8u(s, d, len), ~s[i]);
  VEK_UNARY_ROW("lshift_8u", 8u, veksLShiftC_8u(s, 3, d, len), s[i] << 3);
  VEK_UNARY_ROW("rshift_8u", 8u, veksRShiftC_8u(s, 3, d, len), s[i] >> 3);
  VEK_UNARY_ROW("lshift_16s", 16s, veksLShiftC_16s(s, 3, d, len), s[i] << 3);
  VEK_UNARY_ROW("rshift_16s", 16s, veksRShiftC_16s(s, 3, d, len), s[i] >> 3);
  VEK_UNARY_ROW("rshift_32s", 32s, veksRShiftC_32s(s, 3, d, len), s[i] >> 3);
}

}  // namespace

int main(int argc, char** argv) {
  movement();
  reordering();
  complexParts();
  logic();
  return vekbench::runAll(argc, argv);
}
