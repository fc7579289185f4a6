// Picking a group on the screen, beside the widget tree alone and beside a list that follows every call.
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
        : desktop(desktopBehind), followed(desktop.tree(name)), store(Gtk::ListStore::create(columns))
    {
        view.set_model(store);
        for (const auto& column : columns.texts)
            view.append_column("", column);
        scrolled.add(view);
        window.add(scrolled);
        window.set_default_size(250, 175);
        window.set_transient_for(desktop.mainWindow());
        window.set_type_hint(Gdk::WINDOW_TYPE_HINT_DIALOG);
        scrolled.show_all();
        window.present();
        waitUntilDrawn(window);
        desktop.driver().widgets().addObserver(*this);
    }

    ~FollowingList() override { desktop.driver().widgets().removeObserver(*this); }

    FollowingList(const FollowingList&) = delete;
    FollowingList& operator=(const FollowingList&) = delete;

    void rowsChanged(quelm::Widget& list) override
    {
        if (&list != &followed)
            return;
        const quelm::Rows& rows = list.rows();
        if (rows.count() == 0) {
            store->clear();
            return;
        }
        const Gtk::TreeRow row = *store->append();
        for (std::size_t column = 0; column < columns.texts.size(); ++column)
            row[columns.texts[column]] = rows.cell(rows.count() - 1, column);
    }

    std::size_t rowCount() const { return store->children().size(); }
    Gtk::TreeView& onScreen() { return view; }

private:
    struct Columns : Gtk::TreeModelColumnRecord {
        std::array<Gtk::TreeModelColumn<Glib::ustring>, 6> texts;

        Columns()
        {
            for (auto& text : texts)
                add(text);
        }
    };

    Desktop& desktop;
    quelm::Widget& followed;
    Columns columns;
    Glib::RefPtr<Gtk::ListStore> store;
    Gtk::TreeView view;
    Gtk::ScrolledWindow scrolled;
    Gtk::Window window;
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
        : members(memberCount), lastName(entryNumber(members - 1).name), dialog(groupOf(members))
    {
    }

    /// Until the picks are drawn.
    double pickOnScreen()
    {
        dialog.show();
        dialog.startPicking(members);
        const double seconds =
            secondsOf([this] { dialog.actAndDraw(PhonebookDialog::picks, [this] { dialog.pick(); }); });
        dialog.requireRows(PhonebookDialog::picks, members, lastName);
        dialog.remove();
        return seconds;
    }

    double pickInTree()
    {
        dialog.startPicking(members);
        const double seconds = secondsOf([this] { dialog.pick(); });
        dialog.requireRows(PhonebookDialog::picks, members, lastName);
        return seconds;
    }

    double pickFollowed()
    {
        dialog.startPicking(members);
        std::optional<FollowingList> list(std::in_place, dialog.desktop, PhonebookDialog::picks);
        const double seconds = secondsOf([&] {
            dialog.pick();
            waitUntilDrawn(list->onScreen());
        });
        dialog.requireRows(PhonebookDialog::picks, members, lastName);
        require(list->rowCount() == static_cast<std::size_t>(members), "the following list lacks rows");
        list.reset();
        waitUntilFocused(dialog.desktop.mainWindow());
        return seconds;
    }

    const int members;

private:
    std::string lastName;
    PhonebookDialog dialog;
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
