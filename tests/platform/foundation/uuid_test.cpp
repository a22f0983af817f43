#include "corvane/platform/foundation/uuid.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <set>
#include <string>
#include <thread>

namespace corvane {
namespace {

constexpr int many = 40;  // more than are fetched ahead

std::string makeMany() {
  std::string identifiers;
  for (int count = 0; count < many; ++count) identifiers += makeUuid();
  return identifiers;
}

TEST(Uuid, NoTwoAreAlikeInForkedProcessesAndThreadsEither) {
  std::string all = makeUuid();  // and leaves some that are fetched ahead
  std::array<int, 2> pipe{};
  ASSERT_EQ(::pipe(pipe.data()), 0);
  const pid_t child = fork();
  ASSERT_NE(child, -1);
  if (child == 0) {
    const std::string identifiers = makeMany();
    _exit(write(pipe[1], identifiers.data(), identifiers.size()) > 0 ? 0 : 1);
  }
  close(pipe[1]);
  std::string ofChild(many * 36, '\0');
  EXPECT_EQ(read(pipe[0], ofChild.data(), ofChild.size()), static_cast<ssize_t>(ofChild.size()));
  close(pipe[0]);
  waitpid(child, nullptr, 0);
  std::string ofThread;
  std::thread([&] { ofThread = makeMany(); }).join();
  all += ofChild + makeMany() + ofThread;

  std::set<std::string> different;
  for (std::size_t place = 0; place < all.size(); place += 36) {
    const std::string identifier = all.substr(place, 36);
    EXPECT_THAT(identifier, testing::MatchesRegex("[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}"));
    EXPECT_EQ(identifier[14], '4');
    EXPECT_THAT(identifier[19], testing::AnyOf('8', '9', 'A', 'B'));
    different.insert(identifier);
  }
  EXPECT_EQ(different.size(), 1U + 3U * many);
}

}  // namespace
}  // namespace corvane
