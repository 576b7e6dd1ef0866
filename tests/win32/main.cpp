#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "child.h"

int main(int argc, char** argv) {
  if (argc > 2 && std::string(argv[1]) == "--child") {
    std::string argument;
    for (int i = 3; i < argc; ++i) argument += (i > 3 ? " " : "") + std::string(argv[i]);
    return kestrum::test::RunChild(argv[2], argument);
  }
  if (argc == 3 && std::string(argv[1]) == "--close-box")
    return kestrum::test::CloseSmallest(argv[2]) ? 0 : 1;
  if (argc == 3 && std::string(argv[1]) == "--shows-window")
    return kestrum::test::ShowsWindow(argv[2]) ? 0 : 1;
  // For a program that is started without arguments.
  if (const char* role = std::getenv("KESTRUM_TEST_ROLE")) return kestrum::test::RunChild(role, {});
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
