// SPDX-License-Identifier: Apache-2.0
// Companding: every code and every sample against G.711 as searches through its decision values.
#include "tests/support/shapes.h"

namespace {

using namespace vektest;

// Reconstruction values by following the segments: each has 16 steps, twice as wide as those of the one before (the
// first two of A-law are alike), and the value lies in the middle of its step.
int decodedALaw(int code) {
  const int c = code ^ 0x55;
  int start = 0, width = 16;
  for (int segment = 0; segment < (c >> 4 & 7); ++segment) start += 16 * width, width *= segment == 0 ? 1 : 2;
  const int m = start + (c & 15) * width + width / 2;
  return c & 0x80 ? m : -m;
}
int decodedMuLaw(int code) {
  const int c = code ^ 0xFF;
  int start = -4, width = 8;
  for (int segment = 0; segment < (c >> 4 & 7); ++segment) start += 16 * width, width *= 2;
  const int m = start + (c & 15) * width + width / 2;
  return c & 0x80 ? -m : m;
}

// The step that holds the magnitude, by counting steps up from zero.
int encodedALaw(int x) {
  const int m = x < 0 ? ~x : x;
  int code = 0, end = 16;
  while (code < 127 && m >= end) end += 16 << (++code < 32 ? 0 : code / 16 - 1);
  return (code | (x < 0 ? 0 : 0x80)) ^ 0x55;
}
int encodedMuLaw(int x) {
  const int m = (x < 0 ? ~x : x) & ~3;
  int code = 0, end = 4;
  while (code < 127 && m >= end) end += 8 << (++code / 16);
  return (code ^ 0x7F) | (x < 0 ? 0 : 0x80);
}

template <class T>
std::vector<T> every(int low, int high) {
  std::vector<T> v;
  for (int i = low; i <= high; ++i) v.push_back(T(i));
  return v;
}

TEST(Compand, DecodesEveryCode) {
  std::vector<Vek8u> codes = every<Vek8u>(0, 255);
  for (int i = 0; i < 600; ++i) codes.push_back(randomValue<Vek8u>());
  Shapes(codes).check(veksALawToLin_8u16s, each<Vek16s>(decodedALaw));
  Shapes(codes).check(veksMuLawToLin_8u16s, each<Vek16s>(decodedMuLaw));
  Shapes(codes).check(veksALawToLin_8u32f, each<Vek32f>([](int c) { return float(decodedALaw(c)) / 32768; }));
  Shapes(codes).check(veksMuLawToLin_8u32f, each<Vek32f>([](int c) { return float(decodedMuLaw(c)) / 32768; }));
}

TEST(Compand, EncodesEverySample) {
  const std::vector<Vek16s> samples = every<Vek16s>(-32768, 32767);
  Shapes(samples).check(veksLinToALaw_16s8u, each<Vek8u>(encodedALaw));
  Shapes(samples).check(veksLinToMuLaw_16s8u, each<Vek8u>(encodedMuLaw));
}

TEST(Compand, EncodesFloats) {
  std::vector<float> v;
  for (float x : floatSweep<float>()) v.push_back(x), v.push_back(x / 32768);
  for (int i = -32769; i <= 32769; ++i) v.push_back(float(i) / 32768), v.push_back((float(i) + 0.5f) / 32768);
  const auto sample = [](float x) {
    const double s = double(x) * 32768;
    return std::isnan(s) ? 0 : int(std::round(std::min(std::max(s, -32768.0), 32767.0)));
  };
  Shapes(v).check(veksLinToALaw_32f8u, each<Vek8u>([=](float x) { return encodedALaw(sample(x)); }));
  Shapes(v).check(veksLinToMuLaw_32f8u, each<Vek8u>([=](float x) { return encodedMuLaw(sample(x)); }));
}

// A table by its checksum (FNV-1a), then every shape of a call against it.
void checkTable(VekStatus (*transcode)(const Vek8u*, Vek8u*, int), uint64_t checksum) {
  std::vector<Vek8u> codes = every<Vek8u>(0, 255), table(256);
  transcode(codes.data(), table.data(), 256);
  uint64_t hash = 0xCBF29CE484222325;
  for (Vek8u code : table) hash = (hash ^ code) * 0x100000001B3;
  EXPECT_EQ(hash, checksum);
  for (int i = 0; i < 600; ++i) codes.push_back(randomValue<Vek8u>());
  Shapes(codes).check(transcode, each([&](Vek8u c) { return table[c]; }));
}

TEST(Compand, TranscodesByTheTables) {
  checkTable(veksALawToMuLaw_8u, 0x61EE8248462E0701);
  checkTable(veksMuLawToALaw_8u, 0x16C103B7AFB52AB5);
}

// What does not come from the reference above: published code points, round trips, and how many codes the tables send
// elsewhere than decoding and encoding would.
TEST(Compand, Landmarks) {
  EXPECT_EQ(decodedALaw(0xD5), 8);
  EXPECT_EQ(decodedALaw(0x2A), -32256);
  EXPECT_EQ(decodedMuLaw(0x80), 32124);
  EXPECT_EQ(decodedMuLaw(0x7F), 0);
  inEverySlot([](int) {
    const std::vector<Vek8u> codes = every<Vek8u>(0, 255);
    std::vector<Vek16s> linear(256);
    std::vector<Vek8u> back(256), table(256);
    const auto differing = [&](const std::vector<Vek8u>& want) {
      int n = 0;
      for (int c = 0; c < 256; ++c) n += back[c] != want[c];
      return n;
    };
    veksALawToLin_8u16s(codes.data(), linear.data(), 256);
    veksLinToALaw_16s8u(linear.data(), back.data(), 256);
    EXPECT_EQ(differing(codes), 0);
    veksLinToMuLaw_16s8u(linear.data(), back.data(), 256);
    veksALawToMuLaw_8u(codes.data(), table.data(), 256);
    EXPECT_EQ(differing(table), 32);
    veksMuLawToLin_8u16s(codes.data(), linear.data(), 256);
    veksLinToMuLaw_16s8u(linear.data(), back.data(), 256);
    EXPECT_EQ(differing(codes), 1);
    EXPECT_EQ(back[0x7F], 0xFF);
    veksLinToALaw_16s8u(linear.data(), back.data(), 256);
    veksMuLawToALaw_8u(codes.data(), table.data(), 256);
    EXPECT_EQ(differing(table), 44);
  });
}

}  // namespace
