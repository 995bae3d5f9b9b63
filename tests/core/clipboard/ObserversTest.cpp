// SPDX-License-Identifier: MIT
#include "core/clipboard/Observers.h"

#include <memory>

using Subscription = Observers::Subscription;

TEST(ObserversTest, areToldInTheOrderInWhichTheyCame) {
    Observers observers;
    std::string told;
    const auto first = observers.add([&] { told += 'a'; });
    const auto second = observers.add([&] { told += 'b'; });

    observers.notify();
    observers.notify();

    EXPECT_EQ(told, "abab");
}

TEST(ObserversTest, mayGoWhileAChangeIsTold) {
    Observers observers;
    std::string told;
    std::optional<Subscription> first;
    std::optional<Subscription> second;
    first = observers.add([&] {
        told += 'a';
        first.reset();
        second.reset();
    });
    second = observers.add([&] { told += 'b'; });

    observers.notify();
    observers.notify();

    EXPECT_EQ(told, "a");
}

TEST(ObserversTest, hearOfTheNextChangeWhenTheyComeDuringOne) {
    Observers observers;
    std::string told;
    std::optional<Subscription> second;
    const auto first = observers.add([&] {
        told += 'a';
        if (!second)
            second = observers.add([&] { told += 'b'; });
    });

    observers.notify();
    EXPECT_EQ(told, "a");
    observers.notify();
    EXPECT_EQ(told, "aab");
}

TEST(ObserversTest, mayOutliveWhatTheyObserve) {
    auto observers = std::make_unique<Observers>();
    const auto subscription = observers->add([] {});
    observers.reset();
}

TEST(ObserversTest, mayDestroyWhatTheyObserve) {
    auto observers = std::make_unique<Observers>();
    bool told = false;
    const auto first = observers->add([&] { observers.reset(); });
    const auto second = observers->add([&] { told = true; });

    observers->notify();

    EXPECT_TRUE(told);
}

TEST(ObserversTest, keepTheirPlaceWhenASubscriptionMoves) {
    Observers observers;
    int told = 0;
    Subscription kept;
    {
        auto subscription = observers.add([&] { ++told; });
        kept = std::move(subscription);
    }
    observers.notify();
    EXPECT_EQ(told, 1);

    kept = Subscription();
    observers.notify();
    EXPECT_EQ(told, 1);
}
