// The table of keys, and the example that explains them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/config/configuration_keys.h"

#include "driver/config/configuration_file.h"
#include "tests/support/build_paths.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <string>
#include <vector>

namespace quelm {
namespace {

/// A line of the example that can be made to hold.
struct Setting {
    std::string group;
    std::string name;
    std::string value;
};

const std::string example = build_paths::inProject("packaging/quelm.conf");

std::vector<Setting> settings()
{
    std::vector<Setting> settings;
    std::string group;
    std::ifstream file(example);
    for (std::string line; std::getline(file, line);) {
        EXPECT_TRUE(line.empty() || line.front() == '#') << line << ": is not commented out";
        if (line.size() < 2 || line[1] == ' ') // prose
            continue;
        const auto equal = line.find('=');
        if (line[1] == '[')
            group = line.substr(2, line.find(']') - 2);
        else if (equal == std::string::npos)
            ADD_FAILURE() << line << ": is neither prose nor a setting";
        else
            settings.push_back({group, line.substr(1, equal - 1), line.substr(equal + 1)});
    }
    return settings;
}

const ConfigurationKey* keyOf(const Setting& setting)
{
    for (const ConfigurationKey& key : configurationKeys())
        if (isGroup(key.group, setting.group) && key.name == setting.name)
            return &key;
    return nullptr;
}

TEST(ConfigurationExample, SaysNothingAsItStands)
{
    const auto configuration = readConfiguration(example);
    EXPECT_TRUE(configuration.values.empty());
    EXPECT_TRUE(configuration.destinations.empty());
}

TEST(ConfigurationExample, HoldsEveryKeyAndNoOther)
{
    std::map<const ConfigurationKey*, int> times;
    for (const auto& setting : settings()) {
        const auto* key = keyOf(setting);
        EXPECT_NE(key, nullptr) << "[" << setting.group << "] " << setting.name;
        ++times[key];
    }
    for (const ConfigurationKey& key : configurationKeys())
        EXPECT_EQ(times[&key], 1) << "[" << key.group << "] " << key.name;
}

TEST(ConfigurationExample, EachOfItsLinesIsTakenOnceItIsNoComment)
{
    for (const auto& setting : settings()) {
        const auto* key = keyOf(setting);
        ASSERT_NE(key, nullptr);
        Configuration configuration;
        configuration.file = example;
        configuration.destinations.emplace_back();
        EXPECT_EQ(key->take(configuration, setting.value), "")
            << "[" << setting.group << "] " << setting.name;
    }
}

TEST(ConfigurationExample, AKeyWithADefaultStandsThereWithIt)
{
    for (const auto& setting : settings()) {
        const auto* key = keyOf(setting);
        ASSERT_NE(key, nullptr);
        EXPECT_TRUE(key->preset.empty() || setting.value == key->preset)
            << "[" << setting.group << "] " << setting.name;
    }
}

TEST(ConfigurationKeys, TheirDefaultsAreWhatHoldsWhenNobodySaysAnything)
{
    const Configuration silent;
    Configuration said;
    said.destinations.emplace_back();
    for (const ConfigurationKey& key : configurationKeys())
        EXPECT_TRUE(key.preset.empty() || key.take(said, std::string(key.preset)).empty()) << key.name;
    EXPECT_EQ(said.device.version, silent.device.version);
    EXPECT_EQ(said.device.community, silent.device.community);
    EXPECT_EQ(said.device.timeout, silent.device.timeout);
    EXPECT_EQ(said.device.retries, silent.device.retries);
    EXPECT_EQ(said.device.directoryServerObject, silent.device.directoryServerObject);
    EXPECT_EQ(said.device.directoryBaseObject, silent.device.directoryBaseObject);
    EXPECT_EQ(said.directory.connectTimeout, silent.directory.connectTimeout);
    EXPECT_EQ(said.directory.searchTimeout, silent.directory.searchTimeout);
    EXPECT_EQ(said.directory.sizeLimit, silent.directory.sizeLimit);
    EXPECT_EQ(said.directory.startTls, silent.directory.startTls);
    EXPECT_EQ(said.outboxKeepDays, silent.outboxKeepDays);
}

TEST(ConfigurationKeys, ThoseOfAGroupStandTogether)
{
    std::map<std::string_view, std::size_t> last;
    const auto keys = configurationKeys();
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const auto found = last.find(keys[i].group);
        EXPECT_TRUE(found == last.end() || found->second + 1 == i) << keys[i].group;
        last[keys[i].group] = i;
    }
}

} // namespace
} // namespace quelm
