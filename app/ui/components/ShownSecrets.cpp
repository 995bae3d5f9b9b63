// SPDX-License-Identifier: MIT
#include "app/ui/components/ShownSecrets.h"

#include <utility>

namespace {

Observers& observers() {
    static Observers all;
    return all;
}

}  // namespace

Observers::Subscription ShownSecrets::observeEnd(std::function<void()> observer) {
    return observers().add(std::move(observer));
}

void ShownSecrets::noteEnd() {
    observers().notify();
}
