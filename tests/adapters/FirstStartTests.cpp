// SPDX-License-Identifier: GPL-3.0-or-later
// The first instance that a user opens sets the user up.
#include "RawVst2Host.h"
#include "ScratchUser.h"
#include "support/HostSeam.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <thread>
#include <vector>

namespace fs = std::filesystem;

namespace quorel::test
{

namespace
{
const char ownAddress = 0;

std::string textOf(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void write(const fs::path& file, const std::string& text)
{
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << text;
}

std::size_t countOf(const std::string& text, const std::string& part)
{
    std::size_t count = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

/** A user who has never been set up. */
class FirstStart : public testing::Test
{
protected:
    ~FirstStart() override
    {
        std::error_code ignored;
        fs::remove_all(home, ignored);
    }

    /** Opens and closes an instance in a process of its own. Everything that it and the instance print,
        but for the test's own lines. */
    std::string open(int number = 0) const
    {
        const auto output = home / ("output" + std::to_string(number));
        const auto program = libraryOf(&ownAddress).string();
        const auto command = "\"" + program +
                             "\" --gtest_brief=1 --gtest_also_run_disabled_tests "
                             "--gtest_filter=FirstStart.DISABLED_opensAnInstance \"" +
                             home.string() + "\" > \"" + output.string() + "\" 2>&1";
        EXPECT_EQ(std::system(inShell(command).c_str()), 0) << command << "\n" << textOf(output);
        std::ifstream lines(output);
        std::string unexpected;
        for (std::string line; std::getline(lines, line);)
            if (line.rfind("[", 0) != 0 && line.rfind("Running main", 0) != 0 &&
                line.rfind("Note:", 0) != 0 && line.find_first_not_of("\r") != std::string::npos)
                unexpected += line + "\n";
        return unexpected;
    }

    /** All files below the user's folders with the times of their last change. */
    std::map<fs::path, fs::file_time_type> files() const
    {
        std::map<fs::path, fs::file_time_type> found;
        for (const char* root : {"config", "data"})
            for (const auto& entry : fs::recursive_directory_iterator(home / root))
                if (entry.is_regular_file())
                    found[entry.path()] = entry.last_write_time();
        return found;
    }

    const fs::path home = makeScratchFolder();
    const fs::path settings = home / "config" / "Ostrand";
    const fs::path data = home / "data" / "Ostrand" / "Quorel";
};

TEST_F(FirstStart, DISABLED_opensAnInstance)
{
    RawVst2Host host(QUOREL_PLUGIN_FILE);
    EXPECT_EQ(host.render(512).left, std::vector<float>(512, 0.0f));
}
} // namespace

TEST_F(FirstStart, setsTheUserUpOnceHoweverManyStartTogether)
{
    std::vector<std::string> output(3);
    std::vector<std::thread> starts;
    for (int i = 0; i < 3; ++i)
        starts.emplace_back([this, i, &output] { output[static_cast<std::size_t>(i)] = open(i); });
    for (auto& start : starts)
        start.join();
    for (const auto& text : output)
        EXPECT_EQ(text, "");

    EXPECT_EQ(countOf(textOf(settings / "PluginList.xml"), "<PLUGIN "), 14u);
    const auto tarn = std::string("Tarn/Tarn") + OSTRAND_SUFFIX;
    EXPECT_EQ(textOf(data / "Plugins" / "Ostrand" / tarn), textOf(fs::path(OSTRAND_FOLDER) / tarn));
    const auto factory = fs::path(OSTRAND_FOLDER).parent_path() / "presets";
    int numPresets = 0;
    for (const auto& entry : fs::recursive_directory_iterator(factory))
        if (entry.path().extension() == ".qrl")
        {
            const auto preset = fs::relative(entry.path(), factory);
            EXPECT_EQ(textOf(data / "Banks" / preset), textOf(entry.path())) << preset;
            ++numPresets;
        }
    EXPECT_GE(numPresets, 48);
    EXPECT_FALSE(fs::exists(data / "Setup.log")) << textOf(data / "Setup.log");

    const auto before = files();
    EXPECT_EQ(open(), "");
    EXPECT_EQ(files(), before) << "the second start changed something";

    // What an older version has set up is brought up to date.
    auto text = textOf(settings / "Registry.xml");
    const std::string name = "Setup Version\" val=\"";
    const auto at = text.find(name);
    ASSERT_NE(at, std::string::npos);
    write(settings / "Registry.xml", text.insert(at + name.size(), "0."));
    const auto folder = data / "Banks" / "01 Keys and Splits";
    ASSERT_TRUE(fs::remove(folder / "Four Corners.qrl"));
    fs::remove_all(data / "Layouts");
    EXPECT_EQ(open(), "");
    EXPECT_TRUE(fs::exists(data / "Layouts")) << "nobody looked";
    EXPECT_FALSE(fs::exists(folder / "Four Corners.qrl")) << "the user has removed it";
}

TEST_F(FirstStart, keepsWhatFailsForALogAndPlaysOn)
{
    write(data / "Layouts", "a file where a folder is to be");
    EXPECT_EQ(open(), "");
    EXPECT_EQ(textOf(data / "Setup.log"), "cannot create the folder " + (data / "Layouts").string() + "\n");
    EXPECT_EQ(countOf(textOf(settings / "PluginList.xml"), "<PLUGIN "), 14u) << "the rest is done";

    fs::remove(data / "Layouts");
    EXPECT_EQ(open(), "");
    EXPECT_FALSE(fs::exists(data / "Setup.log")) << textOf(data / "Setup.log");

    // Nothing can be written at all, whoever runs this.
    fs::remove_all(home / "config");
    fs::remove_all(home / "data");
    write(home / "config", "");
    write(home / "data", "");
    EXPECT_EQ(open(), "");
}

} // namespace quorel::test
