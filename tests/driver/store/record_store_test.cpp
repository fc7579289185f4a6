// Records in phonebook files.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/driver/store/record_store_fixture.h"

TEST_F(RecordStoreTest, RecordsKeepTheirOrderAndARepeatedKeyItsPlace)
{
    for (const char* key : {"uZoe", "uAnne", "gTeam"})
        save(key, "1");
    save("uAnne", "2");
    EXPECT_EQ(stored(), (Names{"uZoe=1", "uAnne=2", "gTeam=1"}));
}

TEST_F(RecordStoreTest, SavedRecordIsSeenAtOnceAndInTheFileAfterTheCommit)
{
    RecordStore store(book, Access::readWrite);
    store.save({"uAnne", "1"});
    EXPECT_EQ(listed(store), Names{"uAnne=1"});
    EXPECT_EQ(stored(), Names{});
    store.commit();
    EXPECT_EQ(stored(), Names{"uAnne=1"});
}

TEST_F(RecordStoreTest, WhatWasNotCommittedIsGone)
{
    save("uAnne", "1");
    {
        RecordStore store(book, Access::readWrite);
        store.save({"uAnne", "2"});
        store.save({"uBernard", "1"});
    }
    EXPECT_EQ(stored(), Names{"uAnne=1"});
    EXPECT_EQ(folder.names(), Names{"anne.xdb"}) << "no journal is left";
}

TEST_F(RecordStoreTest, RefreshDropsWhatWasNotCommitted)
{
    save("uAnne", "1");
    RecordStore store(book, Access::readWrite);
    store.save({"uAnne", "2"});
    store.refresh();
    EXPECT_EQ(listed(store), Names{"uAnne=1"});
    store.commit();
    EXPECT_EQ(stored(), Names{"uAnne=1"});
}

TEST_F(RecordStoreTest, RowsStayWhereTheyAreUntilTheFileIsReadAgain)
{
    save("uAnne", "1");
    save("uBernard", "1");
    RecordStore shown(book, Access::read);
    {
        RecordStore other(book, Access::readWrite);
        EXPECT_TRUE(other.remove("uAnne"));
        other.save({"uClaire", "1"});
        other.commit();
    }
    EXPECT_EQ(listed(shown), (Names{"uAnne=1", "uBernard=1"}));
    shown.refresh();
    EXPECT_EQ(listed(shown), (Names{"uBernard=1", "uClaire=1"}));
}

TEST_F(RecordStoreTest, RefreshOfAnUnchangedFileKeepsTheTexts)
{
    save("uAnne", "1");
    RecordStore store(book, Access::readWrite);
    const char* text = store.records()[0].data.c_str();
    store.refresh();
    EXPECT_EQ(store.records()[0].data.c_str(), text);
}

TEST_F(RecordStoreTest, TextsStayValidWhileRecordsAreAdded)
{
    RecordStore store(book, Access::readWrite);
    store.save({"uAnne", "short"});
    const char* text = store.records()[0].data.c_str();
    for (int i = 0; i < 1000; ++i)
        store.save({"u" + std::to_string(i), ""});
    EXPECT_EQ(store.records()[0].data.c_str(), text);
    EXPECT_STREQ(text, "short");
}

TEST_F(RecordStoreTest, FindsByWholeKey)
{
    save("uAnne", "1");
    save("uAnne Marie", "2");
    const RecordStore store(book, Access::read);
    EXPECT_EQ(store.find("uAnne"), 0U);
    EXPECT_EQ(store.find("uAnne Marie"), 1U);
    EXPECT_EQ(store.find("uanne"), std::nullopt);
    EXPECT_EQ(store.find(""), std::nullopt);
}

TEST_F(RecordStoreTest, RemovesRecords)
{
    for (const char* key : {"a", "b", "c"})
        save(key, "1");
    RecordStore store(book, Access::readWrite);
    EXPECT_TRUE(store.remove("b"));
    EXPECT_FALSE(store.remove("b"));
    EXPECT_EQ(store.find("c"), 1U);
    store.commit();
    EXPECT_EQ(stored(), (Names{"a=1", "c=1"}));
    store.clear();
    store.save({"d", "1"});
    store.commit();
    EXPECT_EQ(stored(), Names{"d=1"});
}

TEST_F(RecordStoreTest, KeepsEveryByteAndEveryLength)
{
    std::string everyByte;
    for (int byte = 1; byte < 256; ++byte)
        everyByte += static_cast<char>(byte);
    const std::string longData(200000, 'x');
    save("u" + everyByte, everyByte);
    save("ulong", longData);
    save("uempty", "");
    const RecordStore store(book, Access::read);
    EXPECT_EQ(store.records()[0].key, "u" + everyByte);
    EXPECT_EQ(store.records()[0].data, everyByte);
    EXPECT_EQ(store.records()[1].data, longData);
    EXPECT_EQ(store.records()[2].data, "");
}

TEST_F(RecordStoreTest, RefusesARecordWithoutAKey)
{
    RecordStore store(book, Access::readWrite);
    EXPECT_TRUE(mentions(problem([&] { store.save({"", "x"}); }), "no key"));
}
