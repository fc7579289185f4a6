// A small tree of sources in a temporary folder, for the tests of the checkers.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_LAYERS_SOURCE_TREE_H
#define TESTS_LAYERS_SOURCE_TREE_H

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

/// The tree is empty at first, and gone after the test.
class SourceTree : public testing::Test {
protected:
    SourceTree()
    {
        std::string name = (std::filesystem::temp_directory_path() / "layers.XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr)
            throw std::runtime_error("cannot create a folder like " + name);
        root_ = name;
    }
    ~SourceTree() override
    {
        std::error_code ignored;
        std::filesystem::remove_all(root_, ignored);
    }

    /// Writes a file, named from the tree's root, with the folders that it lies in.
    void write(const std::string& file, const std::string& text)
    {
        std::filesystem::create_directories((root_ / file).parent_path());
        std::ofstream(root_ / file) << text;
    }

    const std::filesystem::path& root() const { return root_; }

private:
    std::filesystem::path root_;
};

#endif
