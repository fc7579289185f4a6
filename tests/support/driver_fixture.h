// A driver with the test component, in a folder of its own.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SUPPORT_DRIVER_FIXTURE_H
#define TESTS_SUPPORT_DRIVER_FIXTURE_H

#include "base/error.h"
#include "driver/core/driver.h"
#include "tests/support/plugin_paths.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

/// Each test loads a copy of the component, which so starts afresh.
class DriverTest : public testing::Test {
protected:
    explicit DriverTest(const std::string& componentFile = pluginPath("good"))
    {
        std::filesystem::create_directory(folder / "home");
        options.home = folder / "home";
        options.user = "ann";
        options.configDirectory = folder / "config";
        std::filesystem::copy_file(componentFile, folder / "home/libBramblecorLanFax.so");
        start();
    }

    void start()
    {
        running_.reset();
        running_ = std::make_unique<quelm::Driver>(options);
    }

    quelm::Driver& driver() { return *running_; }

    /// What the test component noted since the test began: one "NAME;" per callback.
    std::string journal() { return *driver().show("Journal").text; }

    /// Why an action is refused; "nothing" when it is done.
    template <class Action>
    std::string refusal(Action action)
    {
        try {
            action();
        } catch (const quelm::Error& error) {
            return error.what();
        }
        return "nothing";
    }

    TemporaryFolder folder;
    quelm::DriverOptions options;

private:
    std::unique_ptr<quelm::Driver> running_;
};

#endif
