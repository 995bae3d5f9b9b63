// SPDX-License-Identifier: MIT
#include "app/ui/components/ApplicationStyle.h"
#include "app/ui/rows/RowListView.h"
#include "app/ui/theme/FontRegistrar.h"
#include "app/ui/window/MainWindow.h"
#include "bench/MadeVault.h"
#include "tests/app/ui/WindowTest.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <functional>

// How long the window stands still at what a user does in a vault of 100,000 entries: from the event until it is
// painted. All entries in one group are the hardest case, since all of them are one list.
//
//     build/brenvik-window-bench [entries] [entries a group]
//
// Without a display set QT_QPA_PLATFORM=offscreen.

namespace {

double residentMiB() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmRSS:"))
            return std::stod(line.substr(6)) / 1024;
    return 0;
}

/// Of this process alone: what the clock says counts other programs too.
double processorMilliseconds() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

class WindowBench : public WindowTest {
public:
    void TestBody() override {}

    void run(std::size_t entryCount, std::size_t entriesPerGroup) {
        auto database = smallVault("Kıyas");
        database.root = makeVault(entryCount, entriesPerGroup);
        if (database.root.groups.size() == 1)
            database.root.entries = std::exchange(database.root.groups.mutableAt(0).entries, {});
        putVault(database);
        m_window.emplace(environment);
        m_window->show();
        settle();

        std::printf("%-28s %6s %18s %20s\n", "milliseconds", "times", "by the clock", "of the processor");
        measure("wait for a password, a step", 120, [&](int) { QTest::qWait(11); });
        measure("open the vault", 1, [&](int) { unlock(); });
        m_list = m_window->findChild<RowListView*>();
        for (auto* const list : m_window->findChildren<RowListView*>())
            m_list = list->accessibleName() == QStringLiteral("Kayıtlar") ? list : m_list;
        m_search = m_window->findChild<QLineEdit*>();
        for (auto* const field : m_window->findChildren<QLineEdit*>())
            m_search = field->accessibleName() == QStringLiteral("Kayıtlarda ara") ? field : m_search;

        measure("prepare the search, a step", 90, [&](int) { QTest::qWait(11); });
        measure("first letter of a search", 1, [&](int) { m_search->setText("i"); });
        search();
        scroll();
        sort();
        select();
        change();
        measure("lock", 1, [&](int) { state->lock(); });
    }

private:
    using Act = std::function<void(int)>;

    static void settle() {
        for (int round = 0; round < 3; ++round)
            QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);  // as the program's own loop does
    }

    void measure(const char* what, int times, const Act& act) {
        std::vector<double> passed;
        std::vector<double> computed;
        for (int time = 0; time < times; ++time) {
            QElapsedTimer watch;
            watch.start();
            const double before = processorMilliseconds();
            act(time);
            settle();
            computed.push_back(processorMilliseconds() - before);
            passed.push_back(static_cast<double>(watch.nsecsElapsed()) / 1e6);
        }
        std::ranges::sort(passed);
        std::ranges::sort(computed);
        const auto middle = passed.size() / 2;
        std::printf("%-28s %6d %9.2f %8.2f %11.2f %8.2f\n", what, times, passed[middle], passed.back(),
                    computed[middle], computed.back());
        std::fflush(stdout);
    }

    void search() {
        constexpr std::array texts{"in",  "inc", "inci", "inci p", "mehmet", "42",
                                   "421", "xqz", "a",    "an",     "",       "şubesi"};
        measure("a letter of a search", static_cast<int>(texts.size()),
                [&](int time) { m_search->setText(QString::fromUtf8(texts[static_cast<std::size_t>(time)])); });
        measure("leave the search", 1, [&](int) { m_search->clear(); });
        m_list->setFocus();
    }

    void scroll() {
        const double before = residentMiB();
        const QPointF middle = m_list->viewport()->rect().center();
        measure("turn the wheel", 500, [&](int) {
            QWheelEvent turn(middle, m_list->viewport()->mapToGlobal(middle), {}, {0, -120}, {}, {}, Qt::NoScrollPhase,
                             false);
            QCoreApplication::sendEvent(m_list->viewport(), &turn);
        });
        measure("a page down", 100, [&](int) { QTest::keyClick(m_list, Qt::Key_PageDown); });
        measure("a row down", 100, [&](int) { QTest::keyClick(m_list, Qt::Key_Down); });
        measure("the last row and the first", 10,
                [&](int time) { QTest::keyClick(m_list, time % 2 == 0 ? Qt::Key_End : Qt::Key_Home); });
        auto* const bar = m_list->verticalScrollBar();
        measure("the scroll bar anywhere", 500, [&](int time) {
            bar->setValue(static_cast<int>(static_cast<std::int64_t>(time) * 7919 % 500 * bar->maximum() / 500));
        });
        measure("the pointer over rows", 100, [&](int time) {
            QTest::mouseMove(m_list->viewport(), {100, 10 + time * 37 % (m_list->viewport()->height() - 20)});
        });
        measure("a letter looks for a title", 6, [&](int time) { QTest::keyClick(m_list, "aöqzib"[time]); });
        std::printf("memory of scrolling: %.1f MiB before, %.1f after\n", before, residentMiB());
    }

    void sort() {
        constexpr std::array columns{EntrySort::Column::username, EntrySort::Column::url, EntrySort::Column::modified,
                                     EntrySort::Column::manual, EntrySort::Column::title};
        measure("sort by another column", static_cast<int>(columns.size()), [&](int time) {
            state->setSort({.column = columns[static_cast<std::size_t>(time)], .ascending = true});
        });
        measure("turn the sort round", 2,
                [&](int time) { state->setSort({.column = EntrySort::Column::title, .ascending = time == 1}); });
    }

    void select() {
        measure("select all", 3, [&](int) { QTest::keyClick(m_list, Qt::Key_A, Qt::ControlModifier); });
        measure("take one out of all", 5, [&](int time) {
            QTest::mouseClick(m_list->viewport(), Qt::LeftButton, Qt::ControlModifier, {100, 60 + time * 52});
        });
        measure("select none", 1, [&](int) { QTest::keyClick(m_list, Qt::Key_Escape); });
        QTest::keyClick(m_list, Qt::Key_Home);
        measure("select to the end", 1, [&](int) { QTest::keyClick(m_list, Qt::Key_End, Qt::ShiftModifier); });
        measure("and back by one", 5, [&](int) { QTest::keyClick(m_list, Qt::Key_Up, Qt::ShiftModifier); });
        measure("click one", 20, [&](int time) {
            QTest::mouseClick(m_list->viewport(), Qt::LeftButton, {}, {100, 60 + time % 8 * 52});
        });
    }

    void change() {
        measure("copy a password", 5, [&](int) { state->copyPassword(); });
        measure("rename an entry", 5, [&](int time) {
            auto entry = *state->focusedEntry();
            entry.title = (time % 2 == 0 ? "Zeytin " : "Armut ") + std::to_string(time);
            state->updateEntry(entry);
        });
        measure("delete an entry", 5, [&](int) {
            QTest::keyClick(m_list, Qt::Key_Down);
            QTest::keyClick(m_list, Qt::Key_Delete);
        });
        measure("undo", 10, [&](int) { state->undo(); });
        measure("search after a change", 1, [&](int) { m_search->setText("inci"); });
        m_search->clear();
        settle();
        measure("move an entry", 3, [&](int time) {
            const auto shown = state->visibleEntries();
            state->moveEntriesBefore({shown[5 + static_cast<std::size_t>(time)]->id}, shown[2]->id);
        });
        measure("delete all", 1, [&](int) {
            m_list->selectAll();
            QTest::keyClick(m_list, Qt::Key_Delete);
        });
        measure("undo that", 1, [&](int) { state->undo(); });
        KdbxGroup archive;
        state->addGroup(archive, state->root()->id);
        state->setSelectedGroupID(state->root()->id);
        m_list->selectAll();
        settle();
        measure("move all to another group", 1,
                [&](int) { state->moveEntriesTo(state->selectedEntryIDs(), archive.id); });
    }

    std::optional<MainWindow> m_window;
    RowListView* m_list = nullptr;
    QLineEdit* m_search = nullptr;
};

}  // namespace

int main(int argumentCount, char* arguments[]) {
    QApplication application(argumentCount, arguments);
    FontRegistrar::registerBundledFonts(QStringLiteral(BRENVIK_RESOURCES));
    ApplicationStyle::apply(application);
    const auto argument = [&](int place, std::size_t usual) {
        return argumentCount > place ? std::stoul(arguments[place]) : usual;
    };
    const auto entries = argument(1, 100'000);
    WindowBench().run(entries, argument(2, entries));
}
