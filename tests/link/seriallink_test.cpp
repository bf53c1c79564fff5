// The link's pause between commands. Reply handling is covered against the virtual radio: paced
// replies, faults that cut them short or silence them, a pulled cable.
#include "link/seriallink.h"

#include <QElapsedTimer>
#include <gtest/gtest.h>

namespace {

TEST(SerialLinkTest, WaitIsNeverShorterThanAsked) {
    zq::link::SerialLink link;
    for (const qint64 ms : {1, 10, 100})
        for (int round = 0; round < 5; ++round) {
            QElapsedTimer clock;
            clock.start();
            link.Wait(int(ms));
            const qint64 ns = clock.nsecsElapsed();
            EXPECT_GE(ns, ms * 1000000) << ms;
            EXPECT_LT(ns, (ms + 20) * 1000000) << ms;
        }
}

} // namespace
