// Picking a group on the screen, beside the widget tree alone and beside a list that follows every call.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bench/comparison.h"
#include "bench/desktop_phonebook_dialog.h"
#include "bench/samples.h"

#include <gtkmm/liststore.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/treeview.h>

#include <array>
#include <optional>

namespace bench {

namespace {

/// The toolkit's own list in a window: it does what the component does to the tree's list, call by call.
class FollowingList : public quelm::WidgetObserver {
public:
    FollowingList(Desktop& desktopBehind, const std::string& name)
        : desktop_(desktopBehind), followed_(desktop_.tree(name)), store_(Gtk::ListStore::create(columns_))
    {
        view_.set_model(store_);
        for (const auto& column : columns_.texts)
            view_.append_column("", column);
        scrolled_.add(view_);
        window_.add(scrolled_);
        window_.set_default_size(250, 175);
        window_.set_transient_for(desktop_.mainWindow());
        window_.set_type_hint(Gdk::WINDOW_TYPE_HINT_DIALOG);
        scrolled_.show_all();
        window_.present();
        waitUntilDrawn(window_);
        desktop_.driver().widgets().addObserver(*this);
    }

    ~FollowingList() override { desktop_.driver().widgets().removeObserver(*this); }

    FollowingList(const FollowingList&) = delete;
    FollowingList& operator=(const FollowingList&) = delete;

    void rowsChanged(quelm::Widget& list) override
    {
        if (&list != &followed_)
            return;
        const quelm::Rows& rows = list.rows();
        if (rows.count() == 0) {
            store_->clear();
            return;
        }
        const Gtk::TreeRow row = *store_->append();
        for (std::size_t column = 0; column < columns_.texts.size(); ++column)
            row[columns_.texts[column]] = rows.cell(rows.count() - 1, column);
    }

    std::size_t rowCount() const { return store_->children().size(); }
    Gtk::TreeView& onScreen() { return view_; }

private:
    struct Columns : Gtk::TreeModelColumnRecord {
        std::array<Gtk::TreeModelColumn<Glib::ustring>, 6> texts;

        Columns()
        {
            for (auto& text : texts)
                add(text);
        }
    };

    Desktop& desktop_;
    quelm::Widget& followed_;
    Columns columns_;
    Glib::RefPtr<Gtk::ListStore> store_;
    Gtk::TreeView view_;
    Gtk::ScrolledWindow scrolled_;
    Gtk::Window window_;
};

/// Entries, and behind them a group of all of them.
Desktop::Fill groupOf(int members)
{
    return [members](QuelmLegacyDatabase& phonebook) {
        for (int number = 0; number < members; ++number)
            require(phonebook.saveRecord(entryRecord(entryNumber(number)).get()), "an entry was not saved");
        require(phonebook.saveRecord(groupRecord("Team", members).get()), "the group was not saved");
    };
}

/// The dialog, whose last row is the group.
class GroupPicking {
public:
    explicit GroupPicking(int memberCount)
        : members(memberCount), lastName_(entryNumber(members - 1).name), dialog_(groupOf(members))
    {
    }

    /// Until the picks are drawn.
    double pickOnScreen()
    {
        dialog_.show();
        dialog_.startPicking(members);
        const double seconds =
            secondsOf([this] { dialog_.actAndDraw(PhonebookDialog::picks, [this] { dialog_.pick(); }); });
        dialog_.requireRows(PhonebookDialog::picks, members, lastName_);
        dialog_.remove();
        return seconds;
    }

    double pickInTree()
    {
        dialog_.startPicking(members);
        const double seconds = secondsOf([this] { dialog_.pick(); });
        dialog_.requireRows(PhonebookDialog::picks, members, lastName_);
        return seconds;
    }

    double pickFollowed()
    {
        dialog_.startPicking(members);
        std::optional<FollowingList> list(std::in_place, dialog_.desktop, PhonebookDialog::picks);
        const double seconds = secondsOf([&] {
            dialog_.pick();
            waitUntilDrawn(list->onScreen());
        });
        dialog_.requireRows(PhonebookDialog::picks, members, lastName_);
        require(list->rowCount() == static_cast<std::size_t>(members), "the following list lacks rows");
        list.reset();
        waitUntilFocused(dialog_.desktop.mainWindow());
        return seconds;
    }

    const int members;

private:
    std::string lastName_;
    PhonebookDialog dialog_;
};

void pickGroup(benchmark::State& state)
{
    GroupPicking picking(static_cast<int>(state.range(0)));
    compareMeasured(
        state, picking.members, [&picking] { return picking.pickOnScreen(); },
        [&picking] { return picking.pickInTree(); });
}

void pickGroupBesideFollowing(benchmark::State& state)
{
    GroupPicking picking(static_cast<int>(state.range(0)));
    compareMeasured(
        state, picking.members, [&picking] { return picking.pickOnScreen(); },
        [&picking] { return picking.pickFollowed(); });
}

BENCHMARK(pickGroup)->Name("pick_group_on_screen")->Arg(1000)->UseManualTime()->Unit(benchmark::kMillisecond);

// A turn of the yardstick takes seconds.
BENCHMARK(pickGroupBesideFollowing)
    ->Name("pick_group_followed")
    ->Arg(1000)
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace

} // namespace bench
