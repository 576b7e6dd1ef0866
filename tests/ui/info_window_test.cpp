#include "ui/info_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/scripted_ports.h"

namespace kestrum {
namespace {

constexpr const char* kInfoPath = "/car/Kestrum.txt";

class InfoWindowTest : public testing::Test {
 protected:
  InfoWindowTest() { info.Wire(); }

  test::ScriptedPorts ports;
  State state;
  Forms forms;
  Form2& window = forms.form2;
  InfoWindow info{state, forms, ports.ports()};
};

TEST_F(InfoWindowTest, ShowsTheFileIndentedByFiveBlanks) {
  ports.files.files[kInfoPath] = "First\r\n\r\n  third\r\n";
  state.InfoRequest = 1;
  info.Open();
  EXPECT_TRUE(window.visible);
  EXPECT_EQ(window.Text1.text, "     First\r\n     \r\n       third\r\n");
}

struct LineEndRow {
  const char* bytes;
  const char* text;
};

class InfoLineEnds : public InfoWindowTest, public testing::WithParamInterface<LineEndRow> {};

TEST_P(InfoLineEnds, EveryLineEndsInCrLf) {
  ports.files.files[kInfoPath] = GetParam().bytes;
  info.LoadInfo("Kestrum.txt");
  EXPECT_EQ(window.Text1.text, GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Rows, InfoLineEnds,
                         testing::Values(LineEndRow{"", ""}, LineEndRow{"last", "     last\r\n"},
                                         LineEndRow{"a\r\nlast", "     a\r\n     last\r\n"},
                                         LineEndRow{"a\nb\n", "     a\r\n     b\r\n"},
                                         LineEndRow{"\r\n", "     \r\n"},
                                         LineEndRow{"12\xB0\r\n", "     12\xB0\r\n"}));

struct SizeRow {
  std::size_t bytes;
  const char* caption;
};

class InfoCaption : public InfoWindowTest, public testing::WithParamInterface<SizeRow> {};

TEST_P(InfoCaption, NamesFileAndSizeInKilobytes) {
  ports.files.files[kInfoPath] = std::string(GetParam().bytes, 'x');
  state.InfoRequest = 1;
  info.Open();
  EXPECT_EQ(window.caption, GetParam().caption);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, InfoCaption,
    testing::Values(SizeRow{2560, "Kestrum.txt ( 2.5 kb)."}, SizeRow{0, "Kestrum.txt ( 0 kb)."},
                    SizeRow{1024, "Kestrum.txt ( 1 kb)."}, SizeRow{512, "Kestrum.txt ( .5 kb)."},
                    SizeRow{1, "Kestrum.txt ( .001 kb)."}, SizeRow{1000, "Kestrum.txt ( .977 kb)."},
                    // 1.0625 and 1.1875: halves go to the even neighbour
                    SizeRow{1088, "Kestrum.txt ( 1.062 kb)."}, SizeRow{1216, "Kestrum.txt ( 1.188 kb)."},
                    SizeRow{10240, "Kestrum.txt ( 10 kb)."}));

TEST_F(InfoWindowTest, AMissingFileLeavesAnEmptyTextUnderItsName) {
  window.Text1.text = "old";
  state.InfoRequest = 1;
  info.Open();
  EXPECT_TRUE(window.visible);
  EXPECT_EQ(window.Text1.text, "");
  EXPECT_EQ(window.caption, "Kestrum.txt");
  EXPECT_TRUE(ports.dialogs.messages.empty());
}

TEST_F(InfoWindowTest, AnUnreadableFileLeavesAnEmptyTextUnderItsName) {
  ports.files.files[kInfoPath] = "text";
  ports.files.read_fault = "Permission denied";
  state.InfoRequest = 1;
  info.Open();
  EXPECT_EQ(window.Text1.text, "");
  EXPECT_EQ(window.caption, "Kestrum.txt");
}

TEST_F(InfoWindowTest, ShowsTheTableHints) {
  ports.files.files[kInfoPath] = "text";
  state.InfoRequest = 2;
  info.Open();
  EXPECT_TRUE(window.visible);
  EXPECT_THAT(window.Text1.text, testing::StartsWith("     Some table hints \r\n     Reference power"));
  EXPECT_THAT(window.Text1.text, testing::EndsWith("\r\n     174 dBm-1   Hz"));
  EXPECT_EQ(window.caption, "Kestrum Auto field strenght logger ");
}

TEST_F(InfoWindowTest, OpensEmptyWithoutARequest) {
  ports.files.files[kInfoPath] = "text";
  for (const int request : {0, 3, -1}) {
    window.Text1.text = "old";
    state.InfoRequest = request;
    info.Open();
    EXPECT_TRUE(window.visible);
    EXPECT_EQ(window.Text1.text, "") << request;
    EXPECT_EQ(window.caption, "Kestrum Auto field strenght logger ") << request;
  }
}

TEST_F(InfoWindowTest, OpeningAgainShowsWhatIsAskedForNow) {
  ports.files.files[kInfoPath] = "one";
  state.InfoRequest = 1;
  info.Open();
  ports.files.files[kInfoPath] = "two";
  info.Open();
  EXPECT_EQ(window.Text1.text, "     two\r\n");
  state.InfoRequest = 2;
  info.Open();
  EXPECT_THAT(window.Text1.text, testing::StartsWith("     Some table hints "));
}

TEST_F(InfoWindowTest, ClosingEndsTheRequest) {
  for (const int request : {1, 2}) {
    state.InfoRequest = request;
    info.Open();
    window.close();
    EXPECT_FALSE(window.visible);
    EXPECT_EQ(state.InfoRequest, 0);
  }
}

}  // namespace
}  // namespace kestrum
