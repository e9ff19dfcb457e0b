#include <gtest/gtest.h>

#include "host/failure.h"

namespace {

using kavo::host::in_players_words;

TEST(Failure, IsToldInPlayersWordsWithTheErrorBelow) {
  EXPECT_EQ(in_players_words("BINWRITER: cannot write \"a\": No space left on device"),
            "The game had to end. The scores could not be saved.\n\n"
            "BINWRITER: cannot write \"a\": No space left on device");
  EXPECT_EQ(in_players_words("SCREENFLIP: lost"),
            "The game had to end. The picture could not be shown.\n\nSCREENFLIP: lost");
  EXPECT_EQ(in_players_words("RND: QORRT_SEED"),
            "The game had to end. Something went wrong.\n\nRND: QORRT_SEED");
}

} // namespace
