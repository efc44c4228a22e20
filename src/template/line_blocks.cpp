#include "template/line_blocks.h"

#if defined(__SSE2__)
#include <immintrin.h>

namespace {

template <typename Match>
uint64_t mask64(const __m128i bytes[4], Match match) {
  uint64_t bits = 0;
  for (int i = 0; i < 4; ++i) {
    bits |= static_cast<uint64_t>(static_cast<uint16_t>(_mm_movemask_epi8(match(bytes[i]))))
            << (16 * i);
  }
  return bits;
}

__m128i is16(__m128i bytes, char c) {
  return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c));
}

// Where a byte and the one after it may matter: NUL, "%%", "%A", "To" and "TO" ('o' and 'O'
// are the letters that are 'o' once their case bit is set).
__m128i pairs16(__m128i b, __m128i next) {
  const __m128i percent =
      _mm_and_si128(is16(b, '%'), _mm_or_si128(is16(next, '%'), is16(next, 'A')));
  const __m128i to =
      _mm_and_si128(is16(b, 'T'), is16(_mm_or_si128(next, _mm_set1_epi8(0x20)), 'o'));
  return _mm_or_si128(_mm_or_si128(percent, to), is16(b, '\0'));
}

}  // namespace

namespace {

LINE_BLOCK scan16(const char* block) {
  __m128i bytes[4];
  __m128i any = _mm_setzero_si128();
  for (int i = 0; i < 4; ++i) {
    bytes[i] = _mm_loadu_si128(reinterpret_cast<const __m128i*>(block + 16 * i));
    const __m128i next = _mm_loadu_si128(reinterpret_cast<const __m128i*>(block + 16 * i + 1));
    any = _mm_or_si128(any, pairs16(bytes[i], next));
  }
  LINE_BLOCK marks;
  marks.crs = mask64(bytes, [](__m128i b) { return is16(b, '\r'); });
  for (uint64_t bits = marks.crs; bits; bits &= bits - 1) {
    ++marks.cr_count;
    marks.crlf = marks.crlf || block[__builtin_ctzll(bits) + 1] == '\n';
  }
  if (_mm_movemask_epi8(any) == 0) return marks;
  marks.plain = false;
  marks.others = mask64(bytes, [](__m128i b) { return _mm_or_si128(is16(b, '%'), is16(b, '\0')); });
  return marks;
}

}  // namespace

void scan_blocks16(const char* blocks, size_t count, LINE_BLOCK* found) {
  for (size_t i = 0; i < count; ++i) found[i] = scan16(blocks + 64 * i);
}

#if defined(__x86_64__) && defined(__GNUC__)
#define ORMEL_AVX2 __attribute__((target("avx2,popcnt")))
namespace {

ORMEL_AVX2 uint64_t mask32x2(__m256i low, __m256i high) {
  return static_cast<uint32_t>(_mm256_movemask_epi8(low)) |
         static_cast<uint64_t>(static_cast<uint32_t>(_mm256_movemask_epi8(high))) << 32;
}

ORMEL_AVX2 __m256i load32(const char* p) {
  return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
}

ORMEL_AVX2 __m256i is32(__m256i bytes, char c) {
  return _mm256_cmpeq_epi8(bytes, _mm256_set1_epi8(c));
}

ORMEL_AVX2 __m256i pairs32(__m256i b, __m256i next) {
  const __m256i percent =
      _mm256_and_si256(is32(b, '%'), _mm256_or_si256(is32(next, '%'), is32(next, 'A')));
  const __m256i to =
      _mm256_and_si256(is32(b, 'T'), is32(_mm256_or_si256(next, _mm256_set1_epi8(0x20)), 'o'));
  return _mm256_or_si256(_mm256_or_si256(percent, to), is32(b, '\0'));
}

ORMEL_AVX2 LINE_BLOCK scan32(const char* block) {
  const __m256i low = load32(block);
  const __m256i high = load32(block + 32);
  const __m256i next_low = load32(block + 1);
  const __m256i next_high = load32(block + 33);
  LINE_BLOCK marks;
  const __m256i crs_low = is32(low, '\r');
  const __m256i crs_high = is32(high, '\r');
  marks.crs = mask32x2(crs_low, crs_high);
  marks.cr_count = static_cast<int>(_mm_popcnt_u64(marks.crs));
  const __m256i crlf = _mm256_or_si256(_mm256_and_si256(crs_low, is32(next_low, '\n')),
                                       _mm256_and_si256(crs_high, is32(next_high, '\n')));
  marks.crlf = !_mm256_testz_si256(crlf, crlf);
  const __m256i any = _mm256_or_si256(pairs32(low, next_low), pairs32(high, next_high));
  if (_mm256_testz_si256(any, any)) return marks;
  marks.plain = false;
  marks.others = mask32x2(_mm256_or_si256(is32(low, '%'), is32(low, '\0')),
                          _mm256_or_si256(is32(high, '%'), is32(high, '\0')));
  return marks;
}

}  // namespace

bool can_scan_blocks32() {
  return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("popcnt");
}

// The loop is compiled for the wider registers too, so that its constants stay in them.
ORMEL_AVX2 void scan_blocks32(const char* blocks, size_t count, LINE_BLOCK* found) {
  for (size_t i = 0; i < count; ++i) found[i] = scan32(blocks + 64 * i);
}

#define ORMEL_AVX512 __attribute__((target("avx512f,avx512bw,popcnt")))
namespace {

ORMEL_AVX512 uint64_t is64(__m512i bytes, char c) {
  return _mm512_cmpeq_epi8_mask(bytes, _mm512_set1_epi8(c));
}

// A whole block in one register, each comparison giving its 64 bits at once.
ORMEL_AVX512 LINE_BLOCK scan64(const char* block) {
  const __m512i bytes = _mm512_loadu_si512(block);
  const __m512i next = _mm512_loadu_si512(block + 1);
  const uint64_t percents = is64(bytes, '%');
  const uint64_t nuls = is64(bytes, '\0');
  LINE_BLOCK marks;
  marks.crs = is64(bytes, '\r');
  marks.cr_count = static_cast<int>(_mm_popcnt_u64(marks.crs));
  marks.crlf = (marks.crs & is64(next, '\n')) != 0;
  const uint64_t pairs =
      (percents & (is64(next, '%') | is64(next, 'A'))) | nuls |
      (is64(bytes, 'T') & is64(_mm512_or_si512(next, _mm512_set1_epi8(0x20)), 'o'));
  if (pairs == 0) return marks;
  marks.plain = false;
  marks.others = percents | nuls;
  return marks;
}

}  // namespace

bool can_scan_blocks64() {
  return __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("popcnt");
}

ORMEL_AVX512 void scan_blocks64(const char* blocks, size_t count, LINE_BLOCK* found) {
  for (size_t i = 0; i < count; ++i) found[i] = scan64(blocks + 64 * i);
}
#else
bool can_scan_blocks32() {
  return false;
}

void scan_blocks32(const char* blocks, size_t count, LINE_BLOCK* found) {
  scan_blocks16(blocks, count, found);
}

bool can_scan_blocks64() {
  return false;
}

void scan_blocks64(const char* blocks, size_t count, LINE_BLOCK* found) {
  scan_blocks16(blocks, count, found);
}
#endif
#endif
