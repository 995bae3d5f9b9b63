// SPDX-License-Identifier: MIT
#include "app/state/HeldSignals.h"

#include <gtest/gtest.h>

#include <string>

namespace {

/// An object whose signals leave a letter.
struct Sender {
    std::string sent;
    HeldSignals<Sender> held{*this};

    void a() { sent += 'a'; }
    void b() { sent += 'b'; }
};

using Step = HeldSignals<Sender>::Step;
using Interlude = HeldSignals<Sender>::Interlude;

TEST(HeldSignalsTest, areSentAtOnceOutsideAnyStep) {
    Sender sender;
    sender.held.send(&Sender::a);
    EXPECT_EQ(sender.sent, "a");
}

TEST(HeldSignalsTest, areSentOnceAtTheEndOfTheStep) {
    Sender sender;
    {
        const Step step(sender.held);
        sender.held.send(&Sender::b);
        sender.held.send(&Sender::a);
        sender.held.send(&Sender::b);
        EXPECT_EQ(sender.sent, "");
    }
    EXPECT_EQ(sender.sent, "ba");
}

TEST(HeldSignalsTest, waitForTheOutermostStep) {
    Sender sender;
    {
        const Step outer(sender.held);
        {
            const Step inner(sender.held);
            sender.held.send(&Sender::a);
        }
        EXPECT_EQ(sender.sent, "");
    }
    EXPECT_EQ(sender.sent, "a");
}

TEST(HeldSignalsTest, areSentAtOnceInAnInterludeOfAStep) {
    Sender sender;
    {
        const Step step(sender.held);
        {
            const Interlude interlude(sender.held);
            sender.held.send(&Sender::a);
            EXPECT_EQ(sender.sent, "a");
        }
        sender.held.send(&Sender::b);
        EXPECT_EQ(sender.sent, "a");
    }
    EXPECT_EQ(sender.sent, "ab");
}

TEST(HeldSignalsTest, ofAStepWithinAnInterludeAreSentWithThatStep) {
    Sender sender;
    const Step step(sender.held);
    const Interlude interlude(sender.held);
    {
        const Step inner(sender.held);
        sender.held.send(&Sender::a);
        EXPECT_EQ(sender.sent, "");
    }
    EXPECT_EQ(sender.sent, "a");
}

}  // namespace
