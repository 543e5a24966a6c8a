#include "platform/Token.h"

#include <gtest/gtest.h>

#include <utility>

namespace vembrix {
namespace {

TEST(TokenTest, EndsOnceWhenDropped) {
  int ends = 0;
  {
    const Token token([&] { ends += 1; });
  }
  EXPECT_EQ(ends, 1);
}

TEST(TokenTest, AnEmptyTokenHoldsNothing) {
  Token token;
  EXPECT_FALSE(token);
  token.reset();
  EXPECT_FALSE(token);
}

TEST(TokenTest, ResetEndsAndEmpties) {
  int ends = 0;
  Token token([&] { ends += 1; });
  EXPECT_TRUE(token);
  token.reset();
  token.reset();
  EXPECT_FALSE(token);
  EXPECT_EQ(ends, 1);
}

TEST(TokenTest, MovingHandsTheEndOn) {
  int ends = 0;
  Token first([&] { ends += 1; });
  Token second = std::move(first);
  EXPECT_FALSE(first);  // NOLINT(bugprone-use-after-move)
  EXPECT_TRUE(second);
  EXPECT_EQ(ends, 0);
  second.reset();
  EXPECT_EQ(ends, 1);
}

TEST(TokenTest, AssignmentEndsTheFormer) {
  int first = 0;
  int second = 0;
  Token token([&] { first += 1; });
  token = Token([&] { second += 1; });
  EXPECT_EQ(first, 1);
  EXPECT_EQ(second, 0);
}

TEST(TokenTest, AnEndMayResetItsOwnToken) {
  int ends = 0;
  Token token;
  token = Token([&] {
    ends += 1;
    token.reset();
  });
  token.reset();
  EXPECT_EQ(ends, 1);
}

}  // namespace
}  // namespace vembrix
