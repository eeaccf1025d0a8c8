#include "base/byte_map.h"

#include "base/vectors.h"

namespace corvane::VECTOR_NAMESPACE {
namespace {

#if defined(__AVX512VBMI__)

void MapBytes(const std::uint8_t* table, const std::uint8_t* in, std::uint8_t* out, std::size_t count) {
  Octets quarters[4];
  for (int i = 0; i < 4; ++i) quarters[i] = Load<Octets>(table + i * kVectorBytes);
  std::size_t i = 0;
  for (; i + kVectorBytes <= count; i += kVectorBytes) {
    Store(out + i, LookUpLevels(quarters, Load<Octets>(in + i)));
  }
  for (; i < count; ++i) out[i] = table[in[i]];
}

#else

// A table of 256 bytes in 16 pieces of 16. The index is lowered by 16 from piece to piece; a look-up in a
// piece gives its entry (index & 15), or 0 once the index is negative. So all pieces up to the one that holds
// the index answer, and since each is stored as its difference (by XOR) from the one before, their answers
// combine to the entry.
struct Pieces {
  Octets difference[16];
};

Pieces Split(const std::uint8_t* table) {
  Pieces pieces;
  std::uint8_t repeated[kVectorBytes];
  for (int piece = 0; piece < 16; ++piece) {
    const bool first = piece % 8 == 0;  // indices from 128 on walk on their own
    for (int i = 0; i < kVectorBytes; ++i) {
      const int level = 16 * piece + i % 16;
      repeated[i] = (std::uint8_t)(first ? table[level] : table[level] ^ table[level - 16]);
    }
    pieces.difference[piece] = Load<Octets>(repeated);
  }
  return pieces;
}

template <int Vectors>
ALWAYS_INLINE void MapVectors(const Pieces& pieces, const std::uint8_t* in, std::uint8_t* out) {
  Octets low[Vectors];
  Octets high[Vectors];
  Octets result[Vectors];
  for (int v = 0; v < Vectors; ++v) {
    low[v] = Load<Octets>(in + v * kVectorBytes);
    high[v] = low[v] ^ (std::uint8_t)128;
    result[v] = Octets{};
  }
  for (int piece = 0; piece < 8; ++piece) {
    for (int v = 0; v < Vectors; ++v) {
      result[v] ^= LookUpSixteen(pieces.difference[piece], low[v]);
      result[v] ^= LookUpSixteen(pieces.difference[8 + piece], high[v]);
      low[v] = SubtractSigned(low[v], Broadcast(std::uint8_t{16}));
      high[v] = SubtractSigned(high[v], Broadcast(std::uint8_t{16}));
    }
  }
  for (int v = 0; v < Vectors; ++v) Store(out + v * kVectorBytes, result[v]);
}

void MapBytes(const std::uint8_t* table, const std::uint8_t* in, std::uint8_t* out, std::size_t count) {
  constexpr int kAtOnce = 4;
  std::size_t i = 0;
  if (kQuickLookUp && count >= 1024) {  // shorter rows would not pay for splitting the table
    const Pieces pieces = Split(table);
    for (; i + kAtOnce * kVectorBytes <= count; i += kAtOnce * kVectorBytes) {
      MapVectors<kAtOnce>(pieces, in + i, out + i);
    }
  }
  for (; i < count; ++i) out[i] = table[in[i]];
}

#endif

}  // namespace

extern const ByteMapKernels byteMapKernels{MapBytes};

}  // namespace corvane::VECTOR_NAMESPACE
