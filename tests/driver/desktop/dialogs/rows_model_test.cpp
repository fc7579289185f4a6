// The rows of a list, as a list view of the toolkit reads them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/dialogs/rows_model.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <gtkmm/main.h>

#include <initializer_list>
#include <string>
#include <vector>

namespace quelm {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class RowsModelTest : public testing::Test {
protected:
    RowsModelTest() { Gtk::Main::init_gtkmm_internals(); }

    void fill(std::initializer_list<const char*> names)
    {
        rows.clear();
        for (const char* name : names) {
            const char* const cells[] = {name, "555", nullptr};
            rows.add(cells);
        }
    }

    /// Notes what a view is told, "inserted 0" and so on.
    void listen(const Glib::RefPtr<RowsModel>& model)
    {
        const auto note = [this](const char* what) {
            return [this, what](const Gtk::TreePath& path, auto&&...) {
                told.push_back(what + (" " + path.to_string()));
            };
        };
        model->signal_row_inserted().connect(note("inserted"));
        model->signal_row_changed().connect(note("changed"));
        model->signal_row_deleted().connect(note("deleted"));
    }

    static std::vector<std::string> names(const Glib::RefPtr<RowsModel>& model)
    {
        std::vector<std::string> texts;
        for (const Gtk::TreeRow& row : model->children()) {
            Glib::ustring text;
            row.get_value(0, text);
            texts.push_back(text);
        }
        return texts;
    }

    Rows rows{2};
    std::vector<std::string> told;
};

TEST_F(RowsModelTest, ReadsTheRowsInPlace)
{
    fill({"Ann", "Bob"});
    const auto model = RowsModel::create(rows);
    EXPECT_EQ(model->get_n_columns(), 2);
    EXPECT_EQ(model->rowCount(), 2);
    EXPECT_THAT(names(model), ElementsAre("Ann", "Bob"));
}

TEST_F(RowsModelTest, MoreRowsAreToldAsInsertedAndTheOthersAsChanged)
{
    fill({"Ann"});
    const auto model = RowsModel::create(rows);
    listen(model);
    fill({"Cid", "Dora", "Eve"});
    EXPECT_THAT(names(model), ElementsAre("Cid"));
    model->follow();
    EXPECT_THAT(told, ElementsAre("changed 0", "inserted 1", "inserted 2"));
    EXPECT_THAT(names(model), ElementsAre("Cid", "Dora", "Eve"));
}

TEST_F(RowsModelTest, FewerRowsAreToldAsDeletedFromTheEnd)
{
    fill({"Ann", "Bob", "Cid"});
    const auto model = RowsModel::create(rows);
    listen(model);
    fill({"Ann"});
    // Those that are gone read as empty until then.
    EXPECT_THAT(names(model), ElementsAre("Ann", "", ""));
    model->follow();
    EXPECT_THAT(told, ElementsAre("deleted 2", "deleted 1", "changed 0"));
    EXPECT_THAT(names(model), ElementsAre("Ann"));
}

TEST_F(RowsModelTest, FollowingQuietlyTellsNobody)
{
    const auto model = RowsModel::create(rows);
    listen(model);
    fill({"Ann", "Bob"});
    model->followQuietly();
    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(names(model), ElementsAre("Ann", "Bob"));
}

TEST_F(RowsModelTest, ReadsNothingOnceItIsDetached)
{
    fill({"Ann", "Bob"});
    const auto model = RowsModel::create(rows);
    model->detach();
    EXPECT_THAT(names(model), ElementsAre("", ""));
    EXPECT_EQ(model->get_n_columns(), 0);
    model->follow();
    EXPECT_THAT(names(model), IsEmpty());
}

TEST_F(RowsModelTest, IsAListWithPathsOfOneNumber)
{
    fill({"Ann", "Bob"});
    const auto model = RowsModel::create(rows);
    EXPECT_EQ(model->get_flags(), Gtk::TREE_MODEL_ITERS_PERSIST | Gtk::TREE_MODEL_LIST_ONLY);
    EXPECT_EQ(model->get_path(model->get_iter("1")).to_string(), "1");
    EXPECT_FALSE(model->get_iter("2"));
    EXPECT_FALSE(model->get_iter("0:0"));
    EXPECT_TRUE(model->get_iter("0")->children().empty());
}

TEST_F(RowsModelTest, ATextThatIsNoUtf8IsStillShown)
{
    fill({"J\xF6rg"});
    const auto model = RowsModel::create(rows);
    Glib::ustring text;
    model->get_iter("0")->get_value(0, text);
    EXPECT_TRUE(text.validate());
    EXPECT_NE(text, "");
}

} // namespace
} // namespace quelm
