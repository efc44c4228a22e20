// How the cut of a template's text looks at 64 bytes at a time: where the bytes that matter
// to it stand, found by comparing 16, 32 or 64 bytes at once, as the CPU allows.
#pragma once

#include <cstddef>
#include <cstdint>

// Where the bytes of 64 bytes of a text that its cut looks at stand: bit i is set where
// byte i is one. Most blocks are plain, holding no NUL, no '%' that may begin "%%", "%A" or
// "%AI5_", and no "To" or "TO" (which may end in the next block): in those only the line ends
// count.
struct LINE_BLOCK {
  uint64_t crs = 0;
  uint64_t others = 0;  // '%' and NUL, in blocks that are not plain
  int cr_count = 0;
  bool plain = true;
  bool crlf = false;  // some CR is followed by a LF
};

#if defined(__SSE2__)
// Scans count blocks of 64 bytes from blocks on into found, 16 bytes at a time, or 32 where
// the CPU can (can_scan_blocks32(): nearly every x86-64 made since 2013). The last block must
// be followed by one more byte.
void scan_blocks16(const char* blocks, size_t count, LINE_BLOCK* found);
bool can_scan_blocks32();
void scan_blocks32(const char* blocks, size_t count, LINE_BLOCK* found);
// The same 64 bytes at a time, where the CPU has AVX-512 (BW).
bool can_scan_blocks64();
void scan_blocks64(const char* blocks, size_t count, LINE_BLOCK* found);
#endif
