#include "platform/common/smooth_blend.h"

#include <algorithm>

// The wide row gives the same pixels as the plain one.
#if defined(__x86_64__) && defined(__GNUC__)
#define MORVA_WIDE_ROWS 1
#include <immintrin.h>
#endif

namespace platform {
namespace {

std::uint32_t Blended(std::uint32_t ground, std::uint32_t ink, unsigned covered) {
  const unsigned part = covered + (covered >> 7);  // 0 to 256
  std::uint32_t mixed = 0xFFu;
  for (int shift = 16; shift >= 0; shift -= 8) {
    const unsigned from = ground >> shift & 0xFFu;
    const unsigned to = ink >> shift & 0xFFu;
    mixed = mixed << 8 | (from * (256 - part) + to * part) >> 8;
  }
  return mixed;
}

}  // namespace

void BlendPixels(std::uint32_t* pixels, const std::uint8_t* covered, int count, std::uint32_t ink) {
  for (int i = 0; i < count; ++i) {
    if (covered[i] != 0) pixels[i] = Blended(pixels[i], ink, covered[i]);
  }
}

namespace {

void BlendPlainRow(std::uint32_t* pixels, const std::uint8_t* covered, std::uint32_t ink) {
  for (int x = 0; x < kTile; x += kBlock) {
    const std::uint64_t eight = LoadEight(covered + x);
    if (eight == 0) continue;
    if (eight == ~std::uint64_t{0}) {
      std::fill_n(pixels + x, kBlock, ink);
    } else {
      BlendPixels(pixels + x, covered + x, kBlock, ink);
    }
  }
}

#ifdef MORVA_WIDE_ROWS
__attribute__((target("avx2"))) void BlendWideRow(std::uint32_t* pixels,
                                                  const std::uint8_t* covered, std::uint32_t ink) {
  const __m256i zero = _mm256_setzero_si256();
  const __m256i ink32 = _mm256_set1_epi32(static_cast<int>(ink));
  const __m256i ink16 = _mm256_unpacklo_epi8(ink32, zero);
  const __m256i whole = _mm256_set1_epi16(256);
  const __m256i opaque = _mm256_set1_epi32(static_cast<int>(0xFF000000u));
  for (int x = 0; x < kTile; x += kBlock) {
    const std::uint64_t eight = LoadEight(covered + x);
    if (eight == 0) continue;
    __m256i* const at = reinterpret_cast<__m256i*>(pixels + x);
    if (eight == ~std::uint64_t{0}) {
      _mm256_storeu_si256(at, ink32);
      continue;
    }
    // The part of a pixel, 0 to 256, in both halves of its 32 bits.
    __m256i parts = _mm256_cvtepu8_epi32(_mm_cvtsi64_si128(static_cast<long long>(eight)));
    parts = _mm256_add_epi32(parts, _mm256_srli_epi32(parts, 7));
    parts = _mm256_or_si256(parts, _mm256_slli_epi32(parts, 16));
    const __m256i ground = _mm256_loadu_si256(at);
    const __m256i lowPart = _mm256_unpacklo_epi32(parts, parts);
    const __m256i highPart = _mm256_unpackhi_epi32(parts, parts);
    const __m256i low = _mm256_add_epi16(
        _mm256_mullo_epi16(_mm256_unpacklo_epi8(ground, zero), _mm256_sub_epi16(whole, lowPart)),
        _mm256_mullo_epi16(ink16, lowPart));
    const __m256i high = _mm256_add_epi16(
        _mm256_mullo_epi16(_mm256_unpackhi_epi8(ground, zero), _mm256_sub_epi16(whole, highPart)),
        _mm256_mullo_epi16(ink16, highPart));
    const __m256i mixed =
        _mm256_packus_epi16(_mm256_srli_epi16(low, 8), _mm256_srli_epi16(high, 8));
    // A pixel that is not covered keeps all its bits.
    const __m256i free = _mm256_cmpeq_epi32(parts, zero);
    _mm256_storeu_si256(at, _mm256_blendv_epi8(_mm256_or_si256(mixed, opaque), ground, free));
  }
}
#endif

RowBlender ChooseRowBlender() {
#ifdef MORVA_WIDE_ROWS
  if (__builtin_cpu_supports("avx2")) return BlendWideRow;
#endif
  return BlendPlainRow;
}

}  // namespace

const RowBlender BlendRow = ChooseRowBlender();

}  // namespace platform
