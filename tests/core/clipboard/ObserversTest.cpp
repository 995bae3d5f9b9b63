// SPDX-License-Identifier: MIT
#include "core/clipboard/Observers.h"

#include <memory>

using Subscription = Observers::Subscription;

TEST(ObserversTest, areNotifiedInTheOrderInWhichTheyCame) {
    Observers observers;
    std::string notified;
    const auto first = observers.add([&] { notified += 'a'; });
    const auto second = observers.add([&] { notified += 'b'; });

    observers.notify();
    observers.notify();

    EXPECT_EQ(notified, "abab");
}

TEST(ObserversTest, mayGoDuringANotification) {
    Observers observers;
    std::string notified;
    std::optional<Subscription> first;
    std::optional<Subscription> second;
    first = observers.add([&] {
        notified += 'a';
        first.reset();
        second.reset();
    });
    second = observers.add([&] { notified += 'b'; });

    observers.notify();
    observers.notify();

    EXPECT_EQ(notified, "a");
}

TEST(ObserversTest, hearOfTheNextChangeWhenTheyComeDuringOne) {
    Observers observers;
    std::string notified;
    std::optional<Subscription> second;
    const auto first = observers.add([&] {
        notified += 'a';
        if (!second)
            second = observers.add([&] { notified += 'b'; });
    });

    observers.notify();
    EXPECT_EQ(notified, "a");
    observers.notify();
    EXPECT_EQ(notified, "aab");
}

TEST(ObserversTest, mayOutliveWhatTheyObserve) {
    auto observers = std::make_unique<Observers>();
    const auto subscription = observers->add([] {});
    observers.reset();
}

TEST(ObserversTest, mayDestroyWhatTheyObserve) {
    auto observers = std::make_unique<Observers>();
    bool notified = false;
    const auto first = observers->add([&] { observers.reset(); });
    const auto second = observers->add([&] { notified = true; });

    observers->notify();

    EXPECT_TRUE(notified);
}

TEST(ObserversTest, stayInOrderWhenASubscriptionMoves) {
    Observers observers;
    int notified = 0;
    Subscription kept;
    {
        auto subscription = observers.add([&] { ++notified; });
        kept = std::move(subscription);
    }
    observers.notify();
    EXPECT_EQ(notified, 1);

    kept = Subscription();
    observers.notify();
    EXPECT_EQ(notified, 1);
}
