// SPDX-License-Identifier: GPL-3.0-or-later
#include "PlatformFiles.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#if defined(_WIN32)
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace quorel
{

namespace
{

void appendUtf8(std::string& out, std::uint32_t c)
{
    if (c < 0x80)
    {
        out += static_cast<char>(c);
        return;
    }
    const int more = c < 0x800 ? 1 : (c < 0x10000 ? 2 : 3);
    static constexpr std::uint32_t lead[] = {0, 0xc0, 0xe0, 0xf0};
    out += static_cast<char>(lead[more] | (c >> (6 * more)));
    for (int i = more - 1; i >= 0; --i)
        out += static_cast<char>(0x80 | ((c >> (6 * i)) & 0x3f));
}

/** Text with XML's five named and all numeric entities resolved; others stay as they are. */
std::string unescape(const std::string& text)
{
    static constexpr struct
    {
        const char* name;
        char character;
    } named[] = {{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}};

    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        const auto end = text[i] == '&' ? text.find(';', i) : std::string::npos;
        if (end == std::string::npos || end - i > 10)
        {
            out += text[i];
            continue;
        }
        const auto entity = text.substr(i + 1, end - i - 1);
        bool known = false;
        if (entity.size() > 1 && entity[0] == '#')
        {
            const bool hex = entity[1] == 'x' || entity[1] == 'X';
            const auto digits = entity.substr(hex ? 2 : 1);
            char* rest = nullptr;
            const auto code = std::strtoul(digits.c_str(), &rest, hex ? 16 : 10);
            known = !digits.empty() && *rest == '\0' && code > 0 && code < 0x110000;
            if (known)
                appendUtf8(out, static_cast<std::uint32_t>(code));
        }
        for (const auto& candidate : named)
        {
            if (entity == candidate.name)
            {
                out += candidate.character;
                known = true;
            }
        }
        if (known)
            i = end;
        else
            out += '&';
    }
    return out;
}

/** An attribute's value in the text of one tag. */
std::string attribute(const std::string& tag, const std::string& wanted)
{
    std::size_t at = 0;
    while ((at = tag.find('=', at)) != std::string::npos)
    {
        static constexpr char blanks[] = " \t\r\n";
        const auto nameEnd = tag.find_last_not_of(blanks, at - 1);
        const auto nameStart = nameEnd == std::string::npos ? nameEnd : tag.find_last_of(blanks, nameEnd);
        const auto open = tag.find_first_not_of(blanks, at + 1);
        if (nameStart == std::string::npos || open == std::string::npos ||
            (tag[open] != '"' && tag[open] != '\''))
            return {};
        const auto close = tag.find(tag[open], open + 1);
        if (close == std::string::npos)
            return {};
        if (tag.compare(nameStart + 1, nameEnd - nameStart, wanted) == 0)
            return unescape(tag.substr(open + 1, close - open - 1));
        at = close + 1;
    }
    return {};
}

/** The attribute `val` of the VALUE element with this name in a settings file's text, or empty. */
std::string findSettingInXml(const std::string& xml, const std::string& name)
{
    static const std::string element = "<VALUE";
    std::size_t at = 0;
    while ((at = xml.find(element, at)) != std::string::npos)
    {
        at += element.size();
        // A '>' may stand inside a quoted value.
        char quote = 0;
        auto end = at;
        for (; end < xml.size() && (quote != 0 || xml[end] != '>'); ++end)
        {
            if (quote != 0)
                quote = xml[end] == quote ? '\0' : quote;
            else if (xml[end] == '"' || xml[end] == '\'')
                quote = xml[end];
        }
        const auto tag = xml.substr(at, end - at);
        if (attribute(tag, "name") == name)
            return attribute(tag, "val");
        at = end;
    }
    return {};
}

/** A setting in the file of settings of a folder, or empty. */
std::string readFromFile(const std::filesystem::path& settingsHome, const std::string& name)
{
    std::ifstream file(settingsHome / "Ostrand" / "Registry.xml", std::ios::binary);
    static constexpr std::size_t largest = 1 << 20;
    std::string xml(largest, '\0');
    file.read(xml.data(), static_cast<std::streamsize>(largest));
    xml.resize(static_cast<std::size_t>(file.gcount()));
    return findSettingInXml(xml, name);
}

#if defined(_WIN32)

std::wstring widen(const std::string& utf8)
{
    const auto length = static_cast<int>(utf8.size());
    std::wstring wide(
        static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, nullptr, 0)), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, wide.data(), static_cast<int>(wide.size()));
    return wide;
}

std::string narrow(const std::wstring& wide)
{
    const auto length = static_cast<int>(wide.size());
    std::string utf8(static_cast<std::size_t>(
                         WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, nullptr, 0, nullptr, nullptr)),
                     '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, utf8.data(), static_cast<int>(utf8.size()), nullptr,
                        nullptr);
    return utf8;
}

/** The system's own, not the C library's, of which each module has a copy. */
std::wstring environmentVariable(const wchar_t* name)
{
    std::wstring value(GetEnvironmentVariableW(name, nullptr, 0), L'\0');
    value.resize(GetEnvironmentVariableW(name, value.data(), static_cast<DWORD>(value.size())));
    return value;
}

/** A string of the registry, of any length. */
std::string readFromRegistry(const std::wstring& key, const std::wstring& name)
{
    static constexpr int mostTries = 10;
    std::wstring text(256, L'\0');

    // It may grow between the call that tells its size and the next one.
    for (int i = 0; i < mostTries; ++i)
    {
        auto numBytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
        const auto status = RegGetValueW(HKEY_CURRENT_USER, key.c_str(), name.c_str(), RRF_RT_REG_SZ, nullptr,
                                         text.data(), &numBytes);
        if (status == ERROR_SUCCESS)
            return narrow(text.c_str());
        if (status != ERROR_MORE_DATA)
            break;
        text.resize(std::max<std::size_t>(text.size() * 2, numBytes / sizeof(wchar_t) + 1));
    }
    return {};
}

#endif

} // namespace

#if defined(_WIN32)

std::string ownFileName()
{
    static const char here = 0;
    HMODULE module = nullptr;
    if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            reinterpret_cast<LPCWSTR>(&here), &module))
        return {};
    static constexpr DWORD longest = 32768;
    std::wstring path(longest, L'\0');
    path.resize(GetModuleFileNameW(module, path.data(), longest));
    return narrow(std::filesystem::path(path).stem().wstring());
}

std::string readUserSetting(const std::string& key, const std::string& value)
{
    const std::filesystem::path prefix = environmentVariable(L"OSTRAND_HOME");
    return prefix.is_absolute() ? readFromFile(prefix / "config", key + '\\' + value)
                                : readFromRegistry(widen(key), widen(value));
}

#else

std::string ownFileName()
{
    static const char here = 0;
    Dl_info info{};
    if (dladdr(&here, &info) == 0 || info.dli_fname == nullptr)
        return {};
    return std::filesystem::u8path(info.dli_fname).stem().u8string();
}

std::string readUserSetting(const std::string& key, const std::string& value)
{
    std::filesystem::path folder;
    if (const char* config = std::getenv("XDG_CONFIG_HOME"); config != nullptr && config[0] != '\0')
        folder = config;
    else if (const char* home = std::getenv("HOME"); home != nullptr)
        folder = std::filesystem::path(home) / ".config";
    else
        return {};

    return readFromFile(folder, key + "\\" + value);
}

#endif

} // namespace quorel
