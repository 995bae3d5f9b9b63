// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <utility>

/// The observers of a change. They may come and go at any time, also during a notification, and may outlive what they
/// observe.
class Observers {
    using List = std::map<std::uint64_t, std::function<void()>>;

public:
    /// Keeps an observer on the list for as long as it lives.
    class Subscription {
    public:
        Subscription() noexcept = default;
        Subscription(Subscription&&) noexcept = default;
        Subscription& operator=(Subscription&& other) noexcept {
            std::swap(m_list, other.m_list);
            std::swap(m_number, other.m_number);
            return *this;
        }
        Subscription(const Subscription&) = delete;
        Subscription& operator=(const Subscription&) = delete;
        ~Subscription() {
            if (const auto list = m_list.lock())
                list->erase(m_number);
        }

    private:
        friend class Observers;
        Subscription(std::weak_ptr<List> list, std::uint64_t number) noexcept
            : m_list(std::move(list)), m_number(number) {}

        std::weak_ptr<List> m_list;
        std::uint64_t m_number = 0;
    };

    [[nodiscard]] Subscription add(std::function<void()> observer) {
        m_list->emplace(++m_lastNumber, std::move(observer));
        return {m_list, m_lastNumber};
    }

    /// Calls each observer that is on the list now, in the order in which they came.
    void notify() const {
        const auto list = m_list;  // lives on when an observer destroys what it observes
        const auto last = m_lastNumber;
        for (auto next = list->begin(); next != list->end() && next->first <= last;) {
            const auto [number, observer] = *next;  // a copy: it may take itself off the list
            observer();
            next = list->upper_bound(number);
        }
    }

private:
    std::shared_ptr<List> m_list = std::make_shared<List>();
    std::uint64_t m_lastNumber = 0;
};
