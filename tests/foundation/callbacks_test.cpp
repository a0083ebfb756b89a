// The three channels to the host: who gets what, when nobody listens, and what becomes of a sink.
#include <string>
#include <type_traits>
#include <vector>

#include <boost/make_shared.hpp>
#include <boost/shared_ptr.hpp>
#include <boost/weak_ptr.hpp>

#include <gtest/gtest.h>

#include <k5ax/foundation.h>

#include "foundation/utility_guard.h"

namespace {

struct SinkFailure {};

class Callbacks : public testing::Test {
  k5ax_test::UtilityGuard m_guard;
};

class FeedbackCallback : public Callbacks {};
class ErrorCallback : public Callbacks {};
class AssertionCallback : public Callbacks {};

TEST_F(FeedbackCallback, ReceivesTheText) {
  std::vector<std::string> received;
  CUtility::set_feedback_cbk([&received](const char* text) { received.push_back(text); });

  CUtility::feedback("the table turns");

  EXPECT_EQ(received, std::vector<std::string>{"the table turns"});
}

TEST_F(FeedbackCallback, ReceivesAnEmptyTextToo) {
  int calls = 0;
  CUtility::set_feedback_cbk([&calls](const char* text) {
    ++calls;
    EXPECT_STREQ(text, "");
  });

  CUtility::feedback("");

  EXPECT_EQ(calls, 1);
}

TEST_F(FeedbackCallback, ReceivesAPointerIntoTheCallersString) {
  const std::string text = "long enough to live outside the string object itself";
  const char* received = nullptr;
  CUtility::set_feedback_cbk([&received](const char* t) { received = t; });

  CUtility::feedback(text);

  EXPECT_EQ(received, text.c_str());
}

TEST_F(FeedbackCallback, IsSentToWithoutAnyFlag) {
  // The flags decide what the library itself sends; the channel passes whatever it is given.
  int calls = 0;
  CUtility::set_feedback_cbk([&calls](const char*) { ++calls; });
  ASSERT_EQ(CUtility::flags(), 0u);

  CUtility::feedback("text");

  EXPECT_EQ(calls, 1);
}

TEST_F(FeedbackCallback, MissingDropsTheMessageInSilence) { EXPECT_NO_THROW(CUtility::feedback("nobody")); }

TEST_F(FeedbackCallback, IsUninstalledByAnEmptyFunction) {
  int calls = 0;
  CUtility::set_feedback_cbk([&calls](const char*) { ++calls; });
  CUtility::feedback("heard");

  CUtility::set_feedback_cbk(boost::function<void(const char*)>());
  CUtility::feedback("not heard");

  EXPECT_EQ(calls, 1);
}

TEST_F(FeedbackCallback, IsReplacedByTheNextOne) {
  int first_calls = 0;
  int second_calls = 0;
  CUtility::set_feedback_cbk([&first_calls](const char*) { ++first_calls; });
  CUtility::set_feedback_cbk([&second_calls](const char*) { ++second_calls; });

  CUtility::feedback("text");

  EXPECT_EQ(first_calls, 0);
  EXPECT_EQ(second_calls, 1);
}

TEST_F(FeedbackCallback, IsHeldAsACopy) {
  int calls = 0;
  boost::function<void(const char*)> sink = [&calls](const char*) { ++calls; };
  CUtility::set_feedback_cbk(sink);

  sink.clear();
  CUtility::feedback("text");

  EXPECT_EQ(calls, 1);
}

TEST_F(FeedbackCallback, IsDestroyedWhenAnotherTakesItsPlace) {
  auto held_by_sink = boost::make_shared<int>(0);
  const boost::weak_ptr<int> alive = held_by_sink;
  CUtility::set_feedback_cbk([held_by_sink](const char*) {});
  held_by_sink.reset();
  ASSERT_FALSE(alive.expired());

  CUtility::set_feedback_cbk([](const char*) {});

  EXPECT_TRUE(alive.expired());
}

TEST_F(FeedbackCallback, MayThrowThroughToTheCaller) {
  CUtility::set_feedback_cbk([](const char*) { throw SinkFailure(); });

  EXPECT_THROW(CUtility::feedback("text"), SinkFailure);
}

TEST_F(FeedbackCallback, HearsNothingOfTheOtherChannels) {
  int calls = 0;
  CUtility::set_feedback_cbk([&calls](const char*) { ++calls; });

  CUtility::error("text", 1);
  CUtility::assertion_failed("a", "b", "c", 1);

  EXPECT_EQ(calls, 0);
}

TEST_F(ErrorCallback, ReceivesTextAndCode) {
  std::string received_text;
  short received_code = 0;
  CUtility::set_error_cbk([&](const char* text, short code) {
    received_text = text;
    received_code = code;
  });

  CUtility::error("over-travel", 17);

  EXPECT_EQ(received_text, "over-travel");
  EXPECT_EQ(received_code, 17);
}

TEST_F(ErrorCallback, ReceivesAPointerIntoTheCallersString) {
  const std::string text = "long enough to live outside the string object itself";
  const char* received = nullptr;
  CUtility::set_error_cbk([&received](const char* t, short) { received = t; });

  CUtility::error(text, 1);

  EXPECT_EQ(received, text.c_str());
}

// Deliberate: sinks take a short, so that only the low 16 bits of a code arrive. Hosts keep their codes in
// that range and may rely on the wrap.
class ErrorCode : public Callbacks {
 protected:
  static short delivered(int code) {
    short received = 0;
    int calls = 0;
    CUtility::set_error_cbk([&](const char*, short c) {
      received = c;
      ++calls;
    });
    CUtility::error("x", code);
    EXPECT_EQ(calls, 1);
    return received;
  }
};

TEST_F(ErrorCode, BeyondSixteenBitsLosesTheUpperOnes) {
  EXPECT_EQ(delivered(70000), 4464);  // 70000 - 65536
}

TEST_F(ErrorCode, OfExactlySixteenBitsBecomesZero) { EXPECT_EQ(delivered(65536), 0); }

TEST_F(ErrorCode, OneAboveTheLargestShortBecomesTheSmallest) { EXPECT_EQ(delivered(32768), -32768); }

TEST_F(ErrorCode, NegativeStaysNegative) { EXPECT_EQ(delivered(-5), -5); }

TEST_F(ErrorCallback, MissingDropsTheMessageInSilence) { EXPECT_NO_THROW(CUtility::error("nobody", 3)); }

TEST_F(ErrorCallback, IsUninstalledByAnEmptyFunction) {
  int calls = 0;
  CUtility::set_error_cbk([&calls](const char*, short) { ++calls; });
  CUtility::error("heard", 1);

  CUtility::set_error_cbk(boost::function<void(const char*, short)>());
  CUtility::error("not heard", 1);

  EXPECT_EQ(calls, 1);
}

TEST_F(ErrorCallback, IsDestroyedWhenAnotherTakesItsPlace) {
  auto held_by_sink = boost::make_shared<int>(0);
  const boost::weak_ptr<int> alive = held_by_sink;
  CUtility::set_error_cbk([held_by_sink](const char*, short) {});
  held_by_sink.reset();
  ASSERT_FALSE(alive.expired());

  CUtility::set_error_cbk([](const char*, short) {});

  EXPECT_TRUE(alive.expired());
}

TEST_F(ErrorCallback, MayThrowThroughToTheCaller) {
  CUtility::set_error_cbk([](const char*, short) { throw SinkFailure(); });

  EXPECT_THROW(CUtility::error("text", 1), SinkFailure);
}

TEST_F(ErrorCallback, HearsNothingOfTheOtherChannels) {
  int calls = 0;
  CUtility::set_error_cbk([&calls](const char*, short) { ++calls; });

  CUtility::feedback("text");
  CUtility::assertion_failed("a", "b", "c", 1);

  EXPECT_EQ(calls, 0);
}

TEST_F(AssertionCallback, ReceivesItsFourArgumentsInOrderAndUnchanged) {
  // The very pointers, so that no copy or reordering can hide behind equal texts.
  const char* const first = "first";
  const char* const second = "second";
  const char* const third = "third";
  int calls = 0;
  CUtility::set_assertion_handler_cbk([&](const char* a, const char* b, const char* c, long line) {
    ++calls;
    EXPECT_EQ(a, first);
    EXPECT_EQ(b, second);
    EXPECT_EQ(c, third);
    EXPECT_EQ(line, 123456789L);
  });

  CUtility::assertion_failed(first, second, third, 123456789L);

  EXPECT_EQ(calls, 1);
}

TEST_F(AssertionCallback, ReceivesNullTextsToo) {
  int calls = 0;
  CUtility::set_assertion_handler_cbk([&](const char* a, const char* b, const char* c, long line) {
    ++calls;
    EXPECT_EQ(a, nullptr);
    EXPECT_EQ(b, nullptr);
    EXPECT_EQ(c, nullptr);
    EXPECT_EQ(line, -1L);
  });

  CUtility::assertion_failed(nullptr, nullptr, nullptr, -1L);

  EXPECT_EQ(calls, 1);
}

TEST_F(AssertionCallback, MissingNeitherAbortsNorThrows) {
  EXPECT_NO_THROW(CUtility::assertion_failed("a", "b", "c", 1));
}

TEST_F(AssertionCallback, IsUninstalledByAnEmptyFunction) {
  int calls = 0;
  CUtility::set_assertion_handler_cbk([&calls](const char*, const char*, const char*, long) { ++calls; });
  CUtility::assertion_failed("a", "b", "c", 1);

  CUtility::set_assertion_handler_cbk(boost::function<void(const char*, const char*, const char*, long)>());
  CUtility::assertion_failed("a", "b", "c", 1);

  EXPECT_EQ(calls, 1);
}

TEST_F(AssertionCallback, IsDestroyedWhenAnotherTakesItsPlace) {
  auto held_by_hook = boost::make_shared<int>(0);
  const boost::weak_ptr<int> alive = held_by_hook;
  CUtility::set_assertion_handler_cbk([held_by_hook](const char*, const char*, const char*, long) {});
  held_by_hook.reset();
  ASSERT_FALSE(alive.expired());

  CUtility::set_assertion_handler_cbk([](const char*, const char*, const char*, long) {});

  EXPECT_TRUE(alive.expired());
}

TEST_F(AssertionCallback, MayThrowThroughToTheCaller) {
  CUtility::set_assertion_handler_cbk(
      [](const char*, const char*, const char*, long) { throw SinkFailure(); });

  EXPECT_THROW(CUtility::assertion_failed("a", "b", "c", 1), SinkFailure);
}

TEST_F(AssertionCallback, HearsNothingOfTheOtherChannels) {
  int calls = 0;
  CUtility::set_assertion_handler_cbk([&calls](const char*, const char*, const char*, long) { ++calls; });

  CUtility::feedback("text");
  CUtility::error("text", 1);

  EXPECT_EQ(calls, 0);
}

TEST(NullDeleter, LeavesAnObjectThatSomebodyElseOwns) {
  int destroyed = 0;
  struct Counted {
    int* destroyed;
    ~Counted() { ++*destroyed; }
  };
  Counted* const owned_here = new Counted{&destroyed};

  { const boost::shared_ptr<Counted> borrowed(owned_here, CUtility::null_deleter()); }

  EXPECT_EQ(destroyed, 0);
  delete owned_here;
  EXPECT_EQ(destroyed, 1);
}

TEST(NullDeleter, TakesANullPointer) {
  const CUtility::null_deleter deleter;
  EXPECT_NO_THROW(deleter(nullptr));
}

TEST(Utility, HoldsNothingOfItsOwn) {
  EXPECT_TRUE(std::is_empty<CUtility>::value);
  EXPECT_TRUE(std::is_trivially_copy_assignable<CUtility>::value);
}

}  // namespace
