// Where catalogues are looked for.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/catalogue_folder.h"

#include "base/environment.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

TEST(CatalogueFolder, WithoutCataloguesUsesThoseBesideTheProgram)
{
    const TemporaryFolder folder;
    EXPECT_EQ(quelm::localeFolder(folder.path()), quelm::programFolder() / "locale");
    std::filesystem::create_directory(folder / "locale");
    EXPECT_EQ(quelm::localeFolder(folder.path()), folder / "locale");
}

} // namespace
