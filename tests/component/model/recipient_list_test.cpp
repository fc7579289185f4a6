// The list of recipients: order, positions, walking, lookup by key, and who destroys what.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "model/recipient_list.h"

#include "tests/support/component_test.h"

#include <algorithm>
#include <iterator>
#include <random>

class RecipientListTest : public ComponentTest {
protected:
    ~RecipientListTest() override { list.removeAllFaxRecipients(); }

    Tarvik40FaxRecipient* add(const std::string& name, const std::string& faxNumber = "1")
    {
        Tarvik40FaxRecipient* recipient = makeRecipient(name, faxNumber).release();
        EXPECT_TRUE(list.addFaxRecipient(recipient));
        return recipient;
    }

    Tarvik40FaxRecipient* byKey(std::string key) { return list.getFaxRecipientByKey(key); }

    static std::vector<Tarvik40FaxRecipient*> walk(Tarvik40FaxRecipientList& walked)
    {
        std::vector<Tarvik40FaxRecipient*> found;
        for (auto* r = walked.walkFaxRecipientList(true); r != nullptr;
             r = walked.walkFaxRecipientList(false))
            found.push_back(r);
        return found;
    }

    Tarvik40FaxRecipientList list;
};

TEST_F(RecipientListTest, IsEmptyAtFirst)
{
    EXPECT_EQ(list.recipientListSize(), 0);
    EXPECT_EQ(list.walkFaxRecipientList(false), nullptr);
    EXPECT_EQ(list.walkFaxRecipientList(true), nullptr);
}

TEST_F(RecipientListTest, RefusesNull)
{
    EXPECT_FALSE(list.addFaxRecipient(nullptr));
    EXPECT_EQ(list.recipientListSize(), 0);
}

TEST_F(RecipientListTest, KeepsTheOrderOfAdding)
{
    auto* carla = add("Carla");
    auto* anne = add("Anne");
    auto* bernard = add("Bernard");
    EXPECT_EQ(list.recipientListSize(), 3);
    EXPECT_EQ(walk(list), (std::vector{carla, anne, bernard}));
}

TEST_F(RecipientListTest, AddsTheSamePersonTwiceWithoutAsking)
{
    add("Anne", "1");
    add("Anne", "1");
    EXPECT_EQ(list.recipientListSize(), 2);
}

TEST_F(RecipientListTest, PositionsCountFromZero)
{
    auto* anne = add("Anne");
    auto* bernard = add("Bernard");
    EXPECT_EQ(list.getFaxRecipientN(0), anne);
    EXPECT_EQ(list.getFaxRecipientN(1), bernard);
}

TEST_F(RecipientListTest, ANegativePositionIsTheFirst)
{
    auto* anne = add("Anne");
    add("Bernard");
    EXPECT_EQ(list.getFaxRecipientN(-1), anne);
    EXPECT_EQ(list.getFaxRecipientN(-1000), anne);
}

TEST_F(RecipientListTest, APositionAtOrBeyondTheSizeIsNull)
{
    add("Anne");
    add("Bernard");
    EXPECT_EQ(list.getFaxRecipientN(2), nullptr);
    EXPECT_EQ(list.getFaxRecipientN(1000), nullptr);
}

TEST_F(RecipientListTest, EveryPositionOfAnEmptyListIsNull)
{
    for (int n : {-1, 0, 1})
        EXPECT_EQ(list.getFaxRecipientN(n), nullptr) << n;
}

TEST_F(RecipientListTest, PositionsStayRightWhateverHappensInBetween)
{
    std::vector<Tarvik40FaxRecipient*> model;
    const unsigned seed = 40;
    std::mt19937 random(seed);
    auto below = [&random](std::size_t n) { return random() % std::max<std::size_t>(n, 1); };

    for (int step = 0; step < 2000; ++step) {
        switch (below(8)) {
        case 0:
        case 1:
        case 2:
            model.push_back(add("r" + std::to_string(step)));
            break;
        case 3:
            if (!model.empty()) {
                const auto victim = model.begin() + static_cast<std::ptrdiff_t>(below(model.size()));
                EXPECT_TRUE(list.removeFaxRecipient(*victim));
                model.erase(victim);
            }
            break;
        case 4:
            if (below(40) == 0) {
                list.removeAllFaxRecipients();
                model.clear();
            }
            break;
        default:
            break;
        }
        const std::size_t n = below(model.size() + 2);
        ASSERT_EQ(list.getFaxRecipientN(static_cast<int>(n)), n < model.size() ? model[n] : nullptr)
            << "step " << step << ", seed " << seed;
    }
    EXPECT_EQ(walk(list), model);
}

TEST_F(RecipientListTest, RemovesTheVeryObjectAndNotItsLikeness)
{
    auto* first = add("Anne", "1");
    auto* second = add("Anne", "1");
    EXPECT_TRUE(list.removeFaxRecipient(second));
    EXPECT_EQ(walk(list), std::vector{first});
}

TEST_F(RecipientListTest, RemovingAStrangerChangesNothing)
{
    add("Anne", "1");
    auto stranger = makeRecipient("Anne", "1");
    EXPECT_FALSE(list.removeFaxRecipient(stranger.get()));
    EXPECT_FALSE(list.removeFaxRecipient(nullptr));
    EXPECT_EQ(list.recipientListSize(), 1);
    EXPECT_EQ(field(stranger.get(), "RecipientName"), "Anne");
}

TEST_F(RecipientListTest, RemovesTheFirstOfTwoEntriesOfTheSameObjectAndDestroysIt)
{
    auto* anne = add("Anne");
    auto* bernard = add("Bernard");
    list.addFaxRecipient(anne);
    ASSERT_EQ(list.recipientListSize(), 3);

    EXPECT_TRUE(list.removeFaxRecipient(anne));

    EXPECT_EQ(list.recipientListSize(), 2);
    EXPECT_EQ(list.getFaxRecipientN(0), bernard);
    list.clearAllFaxRecipients(); // the second entry dangles: callers never add a pointer twice
    delete bernard;
}

TEST_F(RecipientListTest, RemovingAllEmptiesTheListAndIsAlwaysTrue)
{
    add("Anne");
    add("Bernard");
    EXPECT_TRUE(list.removeAllFaxRecipients());
    EXPECT_EQ(list.recipientListSize(), 0);
    EXPECT_TRUE(list.removeAllFaxRecipients());
}

TEST_F(RecipientListTest, ClearingForgetsWithoutDestroying)
{
    std::unique_ptr<Tarvik40FaxRecipient> anne(add("Anne"));
    list.clearAllFaxRecipients();
    EXPECT_EQ(list.recipientListSize(), 0);
    EXPECT_EQ(field(anne.get(), "RecipientName"), "Anne");
}

TEST_F(RecipientListTest, TheListsEndDestroysNoRecipient)
{
    auto anne = makeRecipient("Anne", "1");
    {
        Tarvik40FaxRecipientList shortLived;
        shortLived.addFaxRecipient(anne.get());
    }
    EXPECT_EQ(field(anne.get(), "RecipientName"), "Anne");
}

TEST_F(RecipientListTest, AWalkEndsWithNullAndStaysThere)
{
    auto* anne = add("Anne");
    EXPECT_EQ(list.walkFaxRecipientList(true), anne);
    EXPECT_EQ(list.walkFaxRecipientList(false), nullptr);
    EXPECT_EQ(list.walkFaxRecipientList(false), nullptr);
}

TEST_F(RecipientListTest, ARestartedWalkBeginsAtTheFirst)
{
    auto* anne = add("Anne");
    auto* bernard = add("Bernard");
    EXPECT_EQ(list.walkFaxRecipientList(true), anne);
    EXPECT_EQ(list.walkFaxRecipientList(true), anne);
    EXPECT_EQ(list.walkFaxRecipientList(false), bernard);
}

TEST_F(RecipientListTest, AWalkIsRestartedAfterARemoval)
{
    auto* anne = add("Anne");
    auto* bernard = add("Bernard");
    auto* carla = add("Carla");
    list.walkFaxRecipientList(true);
    list.removeFaxRecipient(bernard);
    EXPECT_EQ(walk(list), (std::vector{anne, carla}));
}

TEST_F(RecipientListTest, AWalkEndsWhenTheListIsEmptied)
{
    add("Anne");
    add("Bernard");
    list.walkFaxRecipientList(true);
    list.removeAllFaxRecipients();
    EXPECT_EQ(list.walkFaxRecipientList(true), nullptr);
    EXPECT_EQ(list.walkFaxRecipientList(false), nullptr);
}

TEST_F(RecipientListTest, AppendingCopiesThePointersInOrder)
{
    auto* anne = add("Anne");
    auto bernard = makeRecipient("Bernard", "2");
    auto carla = makeRecipient("Carla", "3");
    Tarvik40FaxRecipientList other;
    other.addFaxRecipient(bernard.get());
    other.addFaxRecipient(carla.get());

    EXPECT_TRUE(list.appendRecipientList(&other));

    EXPECT_EQ(walk(list), (std::vector{anne, bernard.get(), carla.get()}));
    EXPECT_EQ(walk(other), (std::vector{bernard.get(), carla.get()}));
    list.clearAllFaxRecipients();
    delete anne;
}

TEST_F(RecipientListTest, AppendingNothingIsFalse)
{
    add("Anne");
    Tarvik40FaxRecipientList empty;
    EXPECT_FALSE(list.appendRecipientList(&empty));
    EXPECT_FALSE(list.appendRecipientList(nullptr));
    EXPECT_EQ(list.recipientListSize(), 1);
}

TEST_F(RecipientListTest, AppendingAListToItselfDoublesIt)
{
    auto* anne = add("Anne");
    auto* bernard = add("Bernard");
    EXPECT_TRUE(list.appendRecipientList(&list));
    EXPECT_EQ(walk(list), (std::vector{anne, bernard, anne, bernard}));
    list.clearAllFaxRecipients();
    delete anne;
    delete bernard;
}

TEST_F(RecipientListTest, FindsByNameAndNumberAsTyped)
{
    auto* ann = add("Ann", "(555)");
    EXPECT_EQ(byKey("Ann(555)"), ann);
    EXPECT_EQ(byKey("Ann555"), nullptr);
}

TEST_F(RecipientListTest, FindsByteForByte)
{
    add("Ann", "555");
    for (const char* key : {"ann555", "Ann 555", "Ann55", "Ann5555", "Ann", "555", ""})
        EXPECT_EQ(byKey(key), nullptr) << key;
}

TEST_F(RecipientListTest, TheKeyHasNoSeam)
{
    auto* anne = add("Anne", "5551234");
    auto* anne5 = add("Anne5", "551234");
    EXPECT_EQ(byKey("Anne5551234"), anne);
    list.removeFaxRecipient(anne);
    EXPECT_EQ(byKey("Anne5551234"), anne5);
}

TEST_F(RecipientListTest, AnEmptyFieldAddsNothingToTheKey)
{
    auto* nameOnly = add("Anne", "");
    auto* numberOnly = add("", "555");
    auto* nothing = add("", "");
    EXPECT_EQ(byKey("Anne"), nameOnly);
    EXPECT_EQ(byKey("555"), numberOnly);
    EXPECT_EQ(byKey(""), nothing);
}

TEST_F(RecipientListTest, AGroupIsFoundByItsName)
{
    add("Anne", "1");
    auto* team = add("Team", "");
    team->setRecipientType(GROUP_RECIPIENT);
    EXPECT_EQ(byKey("Team"), team);
}

TEST_F(RecipientListTest, FindsTheFirstOfSeveral)
{
    auto* first = add("Anne", "1");
    add("Anne", "1");
    EXPECT_EQ(byKey("Anne1"), first);
}

// --- A list that its host changes ------------------------------------------------------------

TEST_F(RecipientListTest, PositionsAreThoseOfTheListThatTheHostChanged)
{
    auto* anne = add("Anne");
    std::unique_ptr<Tarvik40FaxRecipient> bernard(add("Bernard"));
    auto* carla = add("Carla");
    EXPECT_EQ(list.getFaxRecipientN(1), bernard.get());

    auto& places = list.getListObject();
    places.erase(std::next(places.begin()));
    EXPECT_EQ(list.getFaxRecipientN(1), carla);
    EXPECT_EQ(list.getFaxRecipientN(2), nullptr);

    // A host may keep the list, and change it again and again.
    places.push_front(bernard.get());
    EXPECT_EQ(list.getFaxRecipientN(1), anne);
    places.pop_front();
    EXPECT_EQ(list.getFaxRecipientN(1), carla);
    places.reverse();
    EXPECT_EQ(list.getFaxRecipientN(1), anne);
    EXPECT_TRUE(list.removeFaxRecipient(anne));
    EXPECT_EQ(list.getFaxRecipientN(0), carla);
}

TEST_F(RecipientListTest, AWalkGoesOnInTheListThatTheHostChanged)
{
    auto* anne = add("Anne");
    std::unique_ptr<Tarvik40FaxRecipient> bernard(add("Bernard"));
    auto* carla = add("Carla");
    auto& places = list.getListObject();
    EXPECT_EQ(list.walkFaxRecipientList(true), anne);
    places.remove(bernard.get()); // whom the walk was about to reach
    EXPECT_EQ(list.walkFaxRecipientList(false), carla);
    places.clear();
    EXPECT_EQ(list.walkFaxRecipientList(false), nullptr);
    places = {anne, carla};
    EXPECT_EQ(walk(list), (std::vector{anne, carla}));
}

TEST_F(RecipientListTest, AWalkEndsInAListThatTheHostEmptied)
{
    std::unique_ptr<Tarvik40FaxRecipient> anne(add("Anne"));
    std::unique_ptr<Tarvik40FaxRecipient> bernard(add("Bernard"));
    EXPECT_EQ(list.walkFaxRecipientList(true), anne.get());
    list.getListObject().clear();
    EXPECT_EQ(list.walkFaxRecipientList(false), nullptr);
    EXPECT_EQ(list.getFaxRecipientN(0), nullptr);
}

TEST_F(RecipientListTest, AWalkThatEndedStaysThereWhoeverIsAdded)
{
    EXPECT_EQ(list.walkFaxRecipientList(false), nullptr);
    auto* anne = add("Anne");
    EXPECT_EQ(list.walkFaxRecipientList(false), nullptr); // no walk was begun
    EXPECT_EQ(list.walkFaxRecipientList(true), anne);
    add("Bernard");
    EXPECT_EQ(list.walkFaxRecipientList(false), nullptr);
}

TEST_F(RecipientListTest, AWalkGoesOnBehindTheOneThatWasRemoved)
{
    add("Anne");
    auto* bernard = add("Bernard");
    auto* carla = add("Carla");
    list.removeFaxRecipient(bernard);
    EXPECT_EQ(list.walkFaxRecipientList(false), carla);
    list.removeFaxRecipient(carla);
    EXPECT_EQ(list.walkFaxRecipientList(false), nullptr);
}

TEST_F(RecipientListTest, AWalkGoesOnAtTheOneThatAKeyFound)
{
    add("Anne");
    auto* bernard = add("Bernard");
    EXPECT_EQ(byKey("Bernard1"), bernard);
    EXPECT_EQ(list.walkFaxRecipientList(false), bernard);
    EXPECT_EQ(byKey("Nobody"), nullptr);
    EXPECT_EQ(list.walkFaxRecipientList(false), nullptr);
}

TEST_F(RecipientListTest, AskingForPositionsDoesNotMoveAWalk)
{
    auto* anne = add("Anne");
    auto* bernard = add("Bernard");
    auto* carla = add("Carla");
    EXPECT_EQ(list.walkFaxRecipientList(true), anne);
    EXPECT_EQ(list.getFaxRecipientN(2), carla);
    EXPECT_EQ(list.getFaxRecipientN(0), anne);
    EXPECT_EQ(list.walkFaxRecipientList(false), bernard);
}

TEST_F(RecipientListTest, PassesOverPlacesThatHoldNobody)
{
    auto* anne = add("Anne");
    auto* bernard = add("Bernard");
    list.getListObject() = {nullptr, anne, nullptr, nullptr, bernard, nullptr};
    EXPECT_EQ(list.recipientListSize(), 6);
    EXPECT_EQ(walk(list), (std::vector{anne, bernard}));
    EXPECT_EQ(byKey("Bernard1"), bernard);
    EXPECT_EQ(byKey(""), nullptr);
    EXPECT_EQ(list.getFaxRecipientN(0), nullptr);
    EXPECT_EQ(list.getFaxRecipientN(1), anne);
    EXPECT_TRUE(list.removeFaxRecipient(nullptr)); // the first such place, and no recipient
    EXPECT_EQ(list.getFaxRecipientN(0), anne);
    EXPECT_EQ(list.recipientListSize(), 5);
}

// Twice as many must take about twice as long; a walk from the start each time would take hours here.
TEST_F(RecipientListTest, WalksAndPositionsOfALongListTakeTimeLinearInItsSize)
{
    Tarvik40FaxRecipient one;
    constexpr int size = 300'000;
    for (int n = 0; n < size; ++n)
        list.addFaxRecipient(&one);
    int walked = 0;
    for (auto* r = list.walkFaxRecipientList(true); r != nullptr; r = list.walkFaxRecipientList(false))
        ++walked;
    EXPECT_EQ(walked, size);
    int found = 0;
    for (int n = 0; n < size; ++n)
        found += list.getFaxRecipientN(n) == &one ? 1 : 0;
    EXPECT_EQ(found, size);
    list.clearAllFaxRecipients();
}

// Hosts were built against this: the list and four more members, of a pointer's size each.
TEST_F(RecipientListTest, TakesTheRoomThatHostsExpect)
{
    const std::size_t size = sizeof(std::list<void*>) + 4 * sizeof(void*);
    EXPECT_EQ(sizeof(Tarvik40FaxRecipientList), size);
    Tarvik40Fax job;
    const auto placeOf = [&job](const void* member) {
        return static_cast<const char*>(member) - reinterpret_cast<const char*>(&job);
    };
    EXPECT_EQ(placeOf(&job.recipientList), 0);
    EXPECT_EQ(placeOf(&job.tmpRecipientList), size);
    EXPECT_EQ(placeOf(&job.groupMemberList), 2 * size);
    EXPECT_EQ(placeOf(&job.coverRecipientText), 3 * size);
}
