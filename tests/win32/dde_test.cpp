#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>
#include <map>

#include "child.h"
#include "dde_server.h"
#include "desktop/win32/dde_client.h"
#include "support_process/waits.h"

namespace kestrum {
namespace {

using process::Eventually;
using std::chrono::milliseconds;
using std::chrono::steady_clock;
using test::Child;

// A client of Posdex|form1 with what has arrived.
class Listener {
 public:
  Listener() : client_("Posdex", "form1", [this] { ++news_; }) {}
  DdeClient& client() { return client_; }
  bool Shows(const std::string& item, const std::string& text) {
    for (const auto& [name, value] : client_.TakeTexts()) texts_[name] = value;
    return texts_[item] == text;
  }
  bool WaitFor(const std::string& item, const std::string& text) {
    return Eventually([&] { return Shows(item, text); });
  }
  bool WaitForConnection(bool wanted) {
    return Eventually([&] { return client_.Connected() == wanted; });
  }
  int news() const { return news_; }

 private:
  std::atomic<int> news_ = 0;
  std::map<std::string, std::string> texts_;
  DdeClient client_;
};

TEST(Dde, ALinkBringsThePresentTextAndEveryChange) {
  Child server("dde");
  Listener listener;
  listener.client().Link("lblLat1");
  listener.client().Link("lblLong1");
  EXPECT_TRUE(listener.WaitFor("lblLat1", "5157.0000N"));
  EXPECT_TRUE(listener.WaitFor("lblLong1", "00532.0000E"));
  EXPECT_TRUE(listener.client().Connected());
  for (const char* text : {"5157.0001N", "5157.0002N", "5157.0003N"}) {
    server.Tell(std::string("set lblLat1 ") + text);
    EXPECT_TRUE(listener.WaitFor("lblLat1", text));
  }
  EXPECT_TRUE(listener.Shows("lblLong1", "00532.0000E"));
  EXPECT_GE(listener.news(), 5);
}

TEST(Dde, SixItemsAllTellTheirFirstTextAndEveryChange) {
  const std::map<std::string, std::string> first{{"lblLat1", "5157.0000N"}, {"lblLong1", "00532.0000E"},
                                                 {"lblAlt1", "25"},         {"lblTime1", "12:00:00"},
                                                 {"lblSpeed1", "36.5"},     {"lblCourse1", "180.0"}};
  Child server("dde");
  Listener listener;
  for (const auto& [item, text] : first) listener.client().Link(item);
  for (const auto& [item, text] : first) EXPECT_TRUE(listener.WaitFor(item, text)) << item;
  for (const char* text : {"one", "two", "three"}) {
    for (const auto& [item, old] : first) server.Tell("set " + item + " " + text);
    for (const auto& [item, old] : first) EXPECT_TRUE(listener.WaitFor(item, text)) << item << ' ' << text;
  }
}

TEST(Dde, AnItemThatIsLinkedLaterDisturbsNoOther) {
  Child server("dde");
  Listener listener;
  listener.client().Link("lblLat1");
  ASSERT_TRUE(listener.WaitFor("lblLat1", "5157.0000N"));
  listener.client().Link("lblLong1");
  EXPECT_TRUE(listener.WaitFor("lblLong1", "00532.0000E"));
  server.Tell("set lblLat1 0006.0000S");
  server.Tell("set lblLong1 00006.0000W");
  EXPECT_TRUE(listener.WaitFor("lblLat1", "0006.0000S"));
  EXPECT_TRUE(listener.WaitFor("lblLong1", "00006.0000W"));
}

TEST(Dde, WaitsForAServerThatComesLater) {
  Listener listener;
  listener.client().Link("lblLat1");
  EXPECT_FALSE(listener.client().Connected());
  EXPECT_EQ(listener.client().LastHeard(), std::nullopt);
  Child server("dde");
  EXPECT_TRUE(listener.WaitFor("lblLat1", "5157.0000N"));
}

TEST(Dde, AServerThatIsKilledIsMissedAndTakenUpAgain) {
  Listener listener;
  listener.client().Link("lblLat1");
  {
    Child server("dde");
    ASSERT_TRUE(listener.WaitFor("lblLat1", "5157.0000N"));
    server.Tell("set lblLat1 0001.0000S");
    ASSERT_TRUE(listener.WaitFor("lblLat1", "0001.0000S"));
  }
  EXPECT_TRUE(listener.WaitForConnection(false));
  EXPECT_EQ(listener.client().LastHeard(), std::nullopt);
  Child again("dde");
  EXPECT_TRUE(listener.WaitFor("lblLat1", "5157.0000N"));
  again.Tell("set lblLat1 0002.0000S");
  EXPECT_TRUE(listener.WaitFor("lblLat1", "0002.0000S"));
}

TEST(Dde, AServerThatEndsIsMissedAndTakenUpAgain) {
  Listener listener;
  listener.client().Link("lblLat1");
  Child server("dde");
  ASSERT_TRUE(listener.WaitFor("lblLat1", "5157.0000N"));
  server.Tell("quit");
  EXPECT_TRUE(listener.WaitForConnection(false));
  Child again("dde");
  EXPECT_TRUE(listener.WaitForConnection(true));
}

TEST(Dde, AServerThatHangsFallsSilentAndHoldsNobodyUp) {
  Child server("dde");
  Listener listener;
  listener.client().Link("lblLat1");
  ASSERT_TRUE(listener.WaitFor("lblLat1", "5157.0000N"));
  server.Tell("hang 8000");
  const auto heard = [&] { return listener.client().LastHeard().value_or(steady_clock::now()); };
  EXPECT_TRUE(
      Eventually([&] { return steady_clock::now() - heard() > milliseconds(4500); }, milliseconds(9000)));
  EXPECT_TRUE(listener.client().Connected());
  // It goes on when the server does.
  server.Tell("set lblLat1 0003.0000S");
  EXPECT_TRUE(Eventually([&] { return listener.Shows("lblLat1", "0003.0000S"); }, milliseconds(15000)));
}

TEST(Dde, AQuietServerIsHeardAllTheSame) {
  Child server("dde");
  Listener listener;
  listener.client().Link("lblLat1");
  ASSERT_TRUE(listener.WaitFor("lblLat1", "5157.0000N"));
  const auto first = *listener.client().LastHeard();
  EXPECT_TRUE(Eventually([&] {
    const auto last = listener.client().LastHeard();
    return last && *last > first + milliseconds(1500);
  }));
}

TEST(Dde, AnItemThatIsUnlinkedOrUnknownTellsNothing) {
  Child server("dde");
  Listener listener;
  listener.client().Link("lblLat1");
  listener.client().Link("lblLong1");
  listener.client().Link("lblNone");
  ASSERT_TRUE(listener.WaitFor("lblLong1", "00532.0000E"));
  listener.client().Unlink("lblLat1");
  server.Tell("set lblLat1 0004.0000S");
  server.Tell("set lblLong1 00004.0000W");
  EXPECT_TRUE(listener.WaitFor("lblLong1", "00004.0000W"));
  EXPECT_FALSE(listener.Shows("lblLat1", "0004.0000S"));
  EXPECT_TRUE(listener.Shows("lblNone", ""));
}

TEST(Dde, TwoClientsHearTheSame) {
  Child server("dde");
  Listener one;
  Listener two;
  for (Listener* listener : {&one, &two}) listener->client().Link("lblLat1");
  for (Listener* listener : {&one, &two}) ASSERT_TRUE(listener->WaitFor("lblLat1", "5157.0000N"));
  server.Tell("set lblLat1 0005.0000S");
  for (Listener* listener : {&one, &two}) EXPECT_TRUE(listener->WaitFor("lblLat1", "0005.0000S"));
}

TEST(Dde, TheServerCountsItsClients) {
  posdex::DdeServer server("Posdex", "form1", {{"lblLat1", "x"}});
  int clients = 0;
  server.on_clients = [&clients](int count) { clients = count; };
  ASSERT_TRUE(server.Start());
  const auto dispatched = [&clients](int wanted) {
    return Eventually([&] {
      MSG message{};
      while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) ::DispatchMessageW(&message);
      return clients == wanted;
    });
  };
  {
    Listener listener;
    listener.client().Link("lblLat1");
    EXPECT_TRUE(dispatched(1));
  }
  EXPECT_TRUE(dispatched(0));
}

}  // namespace
}  // namespace kestrum
