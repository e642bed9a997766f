// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

#if !JUCE_WINDOWS
#include <csignal>
#include <fcntl.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace quorel::test
{

/** Starts a program, its output thrown away, and kills it after a time. */
inline void runAndKill(const juce::StringArray& commandLine, double millis)
{
    std::vector<std::string> words;
    for (const auto& word : commandLine)
        words.push_back(word.toStdString());
    std::vector<char*> arguments;
    for (auto& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);

    const pid_t child = fork();
    if (child == 0)
    {
        const int nowhere = open("/dev/null", O_WRONLY);
        dup2(nowhere, 1);
        dup2(nowhere, 2);
        execv(arguments[0], arguments.data());
        _exit(127);
    }
    usleep(static_cast<useconds_t>(millis * 1000.0));
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
}

} // namespace quorel::test
#endif
