// CBlowFish: published vectors, an implementation that is not ours, and the handling of buffers.
#include "brindle/blowfish.h"

#include <gtest/gtest.h>

#include <nettle/blowfish.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;
using Block = std::array<unsigned char, 8>;

Bytes FromHex(std::string_view digits) {
  Bytes bytes;
  for (std::size_t i = 0; i + 1 < digits.size(); i += 2)
    bytes.push_back(static_cast<unsigned char>(std::stoi(std::string(digits.substr(i, 2)), nullptr, 16)));
  return bytes;
}

// The published form of a block has its halves most significant byte first; ours has them least significant
// byte first. The change is its own inverse.
void TurnHalves(unsigned char* bytes, std::size_t count) {
  for (std::size_t i = 0; i + 4 <= count; i += 4)
    std::reverse(bytes + i, bytes + i + 4);
}

Bytes Turned(Bytes bytes) {
  TurnHalves(bytes.data(), bytes.size());
  return bytes;
}

Bytes RandomBytes(std::mt19937& random, std::size_t count) {
  Bytes bytes(count);
  for (unsigned char& byte : bytes)
    byte = static_cast<unsigned char>(random());
  return bytes;
}

void SetKey(CBlowFish& cipher, Bytes key) {
  cipher.Initialize(key.data(), static_cast<int>(key.size()));
}

Bytes Encoded(CBlowFish& cipher, Bytes plain) {
  Bytes out(cipher.GetOutputLength(static_cast<unsigned long>(plain.size())));
  EXPECT_EQ(cipher.Encode(plain.data(), out.data(), static_cast<unsigned long>(plain.size())), out.size());
  return out;
}

Bytes Decoded(CBlowFish& cipher, Bytes text) {
  Bytes out(text.size());
  cipher.Decode(text.data(), out.data(), static_cast<unsigned long>(text.size()));
  return out;
}

struct Vector {
  const char* key;
  const char* plain;
  const char* cipher;
};

constexpr Vector kVectors[] = {
    {"0000000000000000", "0000000000000000", "4EF997456198DD78"},
    {"FFFFFFFFFFFFFFFF", "FFFFFFFFFFFFFFFF", "51866FD5B85ECB8A"},
    {"3000000000000000", "1000000000000001", "7D856F9A613063F2"},
    {"1111111111111111", "1111111111111111", "2466DD878B963C9D"},
    {"0123456789ABCDEF", "1111111111111111", "61F9C3802281B096"},
    {"1111111111111111", "0123456789ABCDEF", "7D0CC630AFDA1EC7"},
    {"FEDCBA9876543210", "0123456789ABCDEF", "0ACEAB0FC6A0A28D"},
    {"7CA110454A1A6E57", "01A1D6D039776742", "59C68245EB05282B"},
    {"0131D9619DC1376E", "5CD54CA83DEF57DA", "B1B8CC0B250F09A0"},
    {"07A1133E4A0B2686", "0248D43806F67172", "1730E5778BEA1DA4"},
    {"3849674C2602319E", "51454B582DDF440A", "A25E7856CF2651EB"},
    {"04B915BA43FEB5B6", "42FD443059577FA2", "353882B109CE8F1A"},
    {"0113B970FD34F2CE", "059B5E0851CF143A", "48F4D0884C379918"},
    {"0170F175468FB5E6", "0756D8E0774761D2", "432193B78951FC98"},
    {"43297FAD38E373FE", "762514B829BF486A", "13F04154D69D1AE5"},
    {"07A7137045DA2A16", "3BDD119049372802", "2EEDDA93FFD39C79"},
    {"04689104C2FD3B2F", "26955F6835AF609A", "D887E0393C2DA6E3"},
    {"37D06BB516CB7546", "164D5E404F275232", "5F99D04F5B163969"},
    {"1F08260D1AC2465E", "6B056E18759F5CCA", "4A057A3B24D3977B"},
    {"584023641ABA6176", "004BD6EF09176062", "452031C1E4FADA8E"},
    {"025816164629B007", "480D39006EE762F2", "7555AE39F59B87BD"},
    {"49793EBC79B3258F", "437540C8698F3CFA", "53C55F9CB49FC019"},
    {"4FB05E1515AB73A7", "072D43A077075292", "7A8E7BFA937E89A3"},
    {"49E95D6D4CA229BF", "02FE55778117F12A", "CF9C5D7A4986ADB5"},
    {"018310DC409B26D6", "1D9D5C5018F728C2", "D1ABB290658BC778"},
    {"1C587F1C13924FEF", "305532286D6F295A", "55CB3774D13EF201"},
    {"0101010101010101", "0123456789ABCDEF", "FA34EC4847B268B2"},
    {"1F1F1F1F0E0E0E0E", "0123456789ABCDEF", "A790795108EA3CAE"},
    {"E0FEE0FEF1FEF1FE", "0123456789ABCDEF", "C39E072D9FAC631D"},
    {"0000000000000000", "FFFFFFFFFFFFFFFF", "014933E0CDAFF6E4"},
    {"FFFFFFFFFFFFFFFF", "0000000000000000", "F21E9A77B71C49BC"},
    {"0123456789ABCDEF", "0000000000000000", "245946885754369A"},
    {"FEDCBA9876543210", "FFFFFFFFFFFFFFFF", "6B5C5A9C5D9E0A5A"},
};

TEST(BlowFish, published_vectors_hold_both_ways) {
  for (const Vector& row : kVectors) {
    SCOPED_TRACE(std::string(row.key) + " " + row.plain);
    CBlowFish cipher;
    SetKey(cipher, FromHex(row.key));
    const Bytes plain = Turned(FromHex(row.plain));
    const Bytes text = Turned(FromHex(row.cipher));
    EXPECT_EQ(Encoded(cipher, plain), text);
    EXPECT_EQ(Decoded(cipher, text), plain);
  }
}

TEST(BlowFish, published_vectors_of_key_lengths_hold) {
  const Bytes key = FromHex("F0E1D2C3B4A5968778695A4B3C2D1E0F0011223344556677");
  const Bytes plain = Turned(FromHex("FEDCBA9876543210"));
  constexpr const char* kCiphers[] = {"F9AD597C49DB005E", "E91D21C1D961A6D6", "E9C2B70A1BC65CF3", "BE1E639408640F05",
                                      "B39E44481BDB1E6E", "9457AA83B1928C0D", "8BB77032F960629D", "E87A244E2CC85E82",
                                      "15750E7A4F4EC577", "122BA70B3AB64AE0", "3A833C9AFFC537F6", "9409DA87A90F6BF2",
                                      "884F80625060B8B4", "1F85031C19E11968", "79D9373A714CA34F", "93142887EE3BE15C",
                                      "03429E838CE2D14B", "A4299E27469FF67B", "AFD5AED1C1BC96A8", "10851C0E3858DA9F",
                                      "E6F51ED79B9DB21F", "64A6E14AFD36B46F", "80C7D7D45A5479AD", "05044B62FA52D080"};
  ASSERT_EQ(std::size(kCiphers), key.size());
  for (std::size_t length = 1; length <= key.size(); ++length) {
    SCOPED_TRACE(length);
    CBlowFish cipher;
    SetKey(cipher, Bytes(key.begin(), key.begin() + static_cast<std::ptrdiff_t>(length)));
    EXPECT_EQ(Encoded(cipher, plain), Turned(FromHex(kCiphers[length - 1])));
  }
}

TEST(BlowFish, agrees_with_another_implementation_for_every_key_length) {
  std::mt19937 random(1);
  for (unsigned length = 1; length <= 56; ++length) {
    for (int round = 0; round < 4; ++round) {
      SCOPED_TRACE(length);
      const Bytes key = RandomBytes(random, length);
      const Bytes plain = RandomBytes(random, 64);
      blowfish_ctx other;
      blowfish_set_key(&other, key.size(), key.data());
      Bytes expected(plain.size());
      blowfish_encrypt(&other, expected.size(), expected.data(), Turned(plain).data());

      CBlowFish cipher;
      SetKey(cipher, key);
      const Bytes text = Encoded(cipher, plain);
      EXPECT_EQ(text, Turned(expected));
      EXPECT_EQ(Decoded(cipher, text), plain);
    }
  }
}

TEST(BlowFish, of_a_longer_key_the_first_72_bytes_count) {
  std::mt19937 random(2);
  const Bytes key = RandomBytes(random, 200);
  const Bytes plain = RandomBytes(random, 16);
  CBlowFish first;
  SetKey(first, Bytes(key.begin(), key.begin() + 72));
  for (const std::ptrdiff_t length : {73, 100, 200}) {
    CBlowFish cipher;
    SetKey(cipher, Bytes(key.begin(), key.begin() + length));
    EXPECT_EQ(Encoded(cipher, plain), Encoded(first, plain)) << length;
  }
  CBlowFish shorter;
  SetKey(shorter, Bytes(key.begin(), key.begin() + 71));
  EXPECT_NE(Encoded(shorter, plain), Encoded(first, plain));
}

TEST(BlowFish, a_short_key_is_taken_cyclically) {
  CBlowFish once;
  SetKey(once, FromHex("0123456789"));
  CBlowFish repeated;
  SetKey(repeated, FromHex("01234567890123456789"));
  const Bytes plain = FromHex("000102030405060708090A0B0C0D0E0F");
  EXPECT_EQ(Encoded(once, plain), Encoded(repeated, plain));
}

TEST(BlowFish, a_key_length_below_1_changes_nothing) {
  CBlowFish cipher;
  SetKey(cipher, FromHex("0123456789ABCDEF"));
  const Bytes plain = FromHex("0011223344556677");
  const Bytes before = Encoded(cipher, plain);
  unsigned char byte = 1;
  cipher.Initialize(&byte, 0);
  cipher.Initialize(&byte, -8);
  EXPECT_EQ(Encoded(cipher, plain), before);
}

TEST(BlowFish, a_second_key_replaces_the_first) {
  const Bytes plain = FromHex("0011223344556677");
  CBlowFish fresh;
  SetKey(fresh, FromHex("FEDCBA98"));
  CBlowFish used;
  SetKey(used, FromHex("0123456789ABCDEF"));
  EXPECT_NE(Encoded(used, plain), Encoded(fresh, plain));
  SetKey(used, FromHex("FEDCBA98"));
  EXPECT_EQ(Encoded(used, plain), Encoded(fresh, plain));
}

TEST(BlowFish, two_objects_do_not_disturb_each_other) {
  const Bytes plain = FromHex("0011223344556677");
  CBlowFish first;
  SetKey(first, FromHex("01"));
  const Bytes text = Encoded(first, plain);
  CBlowFish second;
  SetKey(second, FromHex("02"));
  EXPECT_EQ(Encoded(first, plain), text);
  EXPECT_NE(Encoded(second, plain), text);
}

TEST(BlowFish, output_length_is_rounded_up_to_whole_blocks) {
  CBlowFish cipher;
  struct Row {
    unsigned long length;
    unsigned long expected;
  };
  for (const Row& row : {Row{0, 0}, Row{1, 8}, Row{7, 8}, Row{8, 8}, Row{9, 16}, Row{15, 16}, Row{16, 16}, Row{17, 24},
                         Row{1'000'000, 1'000'000}, Row{1'000'001, 1'000'008}})
    EXPECT_EQ(cipher.GetOutputLength(row.length), row.expected) << row.length;
}

TEST(BlowFish, blocks_are_independent) {
  CBlowFish cipher;
  SetKey(cipher, FromHex("0123456789ABCDEF"));
  const Bytes text = Encoded(cipher, FromHex("0011223344556677FFFFFFFFFFFFFFFF0011223344556677"));
  const Bytes first(text.begin(), text.begin() + 8);
  EXPECT_EQ(Bytes(text.begin() + 16, text.end()), first);
  EXPECT_EQ(Encoded(cipher, FromHex("0011223344556677")), first);
  EXPECT_NE(Bytes(text.begin() + 8, text.begin() + 16), first);
}

constexpr unsigned char kGuard = 0xA5;

// Buffers of exactly the stated length, and a guard behind them.
TEST(BlowFish, every_length_is_padded_with_zeros_and_comes_back) {
  std::mt19937 random(3);
  CBlowFish cipher;
  SetKey(cipher, RandomBytes(random, 8));
  for (std::size_t length = 0; length <= 40; ++length) {
    SCOPED_TRACE(length);
    const Bytes plain = RandomBytes(random, length);
    const auto count = static_cast<unsigned long>(length);
    const std::size_t whole = cipher.GetOutputLength(count);
    Bytes padded = plain;
    padded.resize(whole, 0);
    const Bytes expected = Encoded(cipher, padded);

    // Separate buffers: the source is read for its length only, and stays.
    Bytes source = plain;
    Bytes out(whole + 1, kGuard);
    EXPECT_EQ(cipher.Encode(source.data(), out.data(), count), whole);
    EXPECT_EQ(source, plain);
    EXPECT_EQ(out[whole], kGuard);
    out.pop_back();
    EXPECT_EQ(out, expected);

    // In place.
    Bytes both = plain;
    both.resize(whole, 0xEE); // what stands behind the text must not be read
    both.push_back(kGuard);
    EXPECT_EQ(cipher.Encode(both.data(), both.data(), count), whole);
    EXPECT_EQ(both[whole], kGuard);
    both.pop_back();
    EXPECT_EQ(both, expected);

    // Back, in place and apart; any length within the last block deciphers the whole of it.
    for (unsigned long cut = length == 0 ? 0 : static_cast<unsigned long>(whole) - 7; cut <= whole; ++cut) {
      Bytes apart(whole + 1, kGuard);
      Bytes text = expected;
      cipher.Decode(text.data(), apart.data(), cut);
      EXPECT_EQ(apart[whole], kGuard);
      apart.pop_back();
      EXPECT_EQ(apart, padded);
      EXPECT_EQ(text, expected);
      cipher.Decode(text.data(), text.data(), cut);
      EXPECT_EQ(text, padded);
    }
  }
}

TEST(BlowFish, nothing_to_do_touches_no_buffer) {
  CBlowFish cipher;
  SetKey(cipher, FromHex("01"));
  Block block{};
  block.fill(kGuard);
  const Block before = block;
  EXPECT_EQ(cipher.Encode(block.data(), block.data(), 0), 0U);
  cipher.Decode(block.data(), block.data(), 0);
  EXPECT_EQ(block, before);
  EXPECT_EQ(cipher.Encode(nullptr, nullptr, 0), 0U);
  cipher.Decode(nullptr, nullptr, 0);
}

TEST(BlowFish, thirteen_bytes_decipher_two_blocks) {
  std::mt19937 random(4);
  CBlowFish cipher;
  SetKey(cipher, RandomBytes(random, 8));
  const Bytes plain = RandomBytes(random, 24);
  Bytes text = Encoded(cipher, plain);
  Bytes out(24, kGuard);
  cipher.Decode(text.data(), out.data(), 13);
  EXPECT_EQ(Bytes(out.begin(), out.begin() + 16), Bytes(plain.begin(), plain.begin() + 16));
  EXPECT_EQ(Bytes(out.begin() + 16, out.end()), Bytes(8, kGuard));
}

TEST(BlowFish, a_large_buffer_agrees_with_another_implementation) {
  std::mt19937 random(5);
  const Bytes key = RandomBytes(random, 16);
  const Bytes plain = RandomBytes(random, std::size_t{1} << 18);
  blowfish_ctx other;
  blowfish_set_key(&other, key.size(), key.data());
  Bytes expected(plain.size());
  blowfish_encrypt(&other, expected.size(), expected.data(), Turned(plain).data());
  TurnHalves(expected.data(), expected.size());
  CBlowFish cipher;
  SetKey(cipher, key);
  EXPECT_TRUE(Encoded(cipher, plain) == expected);
  EXPECT_TRUE(Decoded(cipher, expected) == plain);
}

} // namespace
