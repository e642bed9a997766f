// SPDX-License-Identifier: GPL-3.0-or-later
// Times Quorel's effects side by side with LV2 plug-ins and JUCE's own effects; Markdown to the standard
// output.
#include "Jobs.h"
#include "JucePeers.h"
#include "LV2Host.h"
#include "OwnEffects.h"
#include "Timing.h"

#include "effects/FxTypes.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <string>
#include <vector>

namespace
{
using namespace quorel;
using namespace quorel::peers;

struct Entry
{
    std::string name;
    Maker make;
    int combs = 0;
    std::string note = {};   ///< why it has no figures
    std::string lesser = {}; ///< why it doesn't count
    double ns64 = 0.0, ns128 = 0.0, silence = 0.0;
};

struct Section
{
    std::string job;
    std::vector<Entry> own, peers;
};

struct Comparison
{
    const Entry* peer = nullptr;
    double ratio = 0.0;
};

/** The cheapest peer and our cost over its own, for each comb where the effect is a bank of them. */
Comparison compare(const Section& section, const Entry& own)
{
    Comparison best;
    for (const Entry& peer : section.peers)
    {
        if (!peer.note.empty() || !peer.lesser.empty() || (own.combs > 0 && peer.combs == 0))
            continue;
        const double size = own.combs > 0 ? static_cast<double>(peer.combs) / own.combs : 1.0;
        const double ratio = size * own.ns128 / peer.ns128;
        if (ratio > best.ratio)
            best = {&peer, ratio};
    }
    return best;
}

int findType(const std::string& name)
{
    for (int type = 0; type < fxTypeCount; ++type)
        if (name == fxTypes[static_cast<std::size_t>(type)].name)
            return type;
    return -1;
}

Entry ownEntry(const OwnType& own)
{
    if (own.name == eqBandsName || own.name == eqLaddersName)
        return {own.name, [bands = own.name == eqBandsName](int) { return makeOwnEq(bands, !bands); }};

    const int type = findType(own.name);
    Entry entry{own.label.empty() ? own.name : own.name + ", " + own.label,
                [type, own](int) { return makeOwnEffect(type, own.firstParameter); }, own.combs};
    if (type < 0)
        entry.note = "not in the type table";
    return entry;
}

std::unique_ptr<Candidate> makePeer(const Peer& peer, LV2Host& host, int blockLength, std::string& problem)
{
    if (!peer.juceEffect.empty())
        return makeJucePeer(peer.juceEffect, blockLength);

    std::vector<std::unique_ptr<Candidate>> parts;
    for (const LV2Setup& plugin : peer.plugins)
    {
        parts.push_back(host.load(plugin, blockLength, problem));
        if (parts.back() == nullptr)
            return nullptr;
    }

    return parts.size() == 1 ? std::move(parts.front())
                             : std::make_unique<Chain>(std::move(parts), blockLength);
}

std::vector<Section> makeSections(LV2Host& host)
{
    std::vector<Section> sections;
    std::vector<bool> placed(fxTypeCount, false);

    for (const Job& job : allJobs())
    {
        Section section{job.name, {}, {}};

        for (const OwnType& own : job.types)
        {
            section.own.push_back(ownEntry(own));
            if (const int type = findType(own.name); type >= 0)
                placed[static_cast<std::size_t>(type)] = true;
        }

        for (const Peer& peer : job.peers)
        {
            Entry entry{peer.name, {}, peer.combs, {}, peer.lesser};
            entry.make = [&peer, &host](int blockLength)
            {
                std::string problem;
                return makePeer(peer, host, blockLength, problem);
            };

            const auto trial = makePeer(peer, host, 64, entry.note);
            if (trial != nullptr && !job.mayPassNoise && !changesNoise(*trial, 64))
                entry.note = "leaves the sound alone";
            section.peers.push_back(std::move(entry));
        }

        sections.push_back(std::move(section));
    }

    Section others{"Others", {}, {}};
    for (int type = 0; type < fxTypeCount; ++type)
        if (!placed[static_cast<std::size_t>(type)])
            others.own.push_back(ownEntry({fxTypes[static_cast<std::size_t>(type)].name}));
    sections.push_back(std::move(others));
    return sections;
}

void timeSection(Section& section, const Rounds& rounds)
{
    std::vector<Entry*> entries;
    for (auto* list : {&section.own, &section.peers})
        for (Entry& entry : *list)
            entries.push_back(&entry);

    for (const int blockLength : {64, 128})
    {
        std::vector<std::unique_ptr<Candidate>> candidates;
        std::vector<Candidate*> players;
        for (Entry* entry : entries)
        {
            candidates.push_back(entry->note.empty() ? entry->make(blockLength) : nullptr);
            players.push_back(candidates.back().get());
        }

        const auto times = timeInTurn(players, blockLength, rounds);
        for (std::size_t i = 0; i < entries.size(); ++i)
            (blockLength == 64 ? entries[i]->ns64 : entries[i]->ns128) = times[i];
    }
}

/** All at once, so that a busy moment of the machine doesn't meet every pass of one effect. */
void timeAllSilence(std::vector<Section>& sections)
{
    std::vector<Maker> makers;
    std::vector<Entry*> entries;
    for (Section& section : sections)
        for (Entry& entry : section.own)
            if (entry.note.empty())
            {
                makers.push_back(entry.make);
                entries.push_back(&entry);
            }

    const auto times = timeSilence(makers, 64);
    for (std::size_t i = 0; i < entries.size(); ++i)
        entries[i]->silence = times[i];
}

void printOwn(std::ostream& out, const std::vector<Section>& sections)
{
    out << "| Quorel's effect | ns, 64 | ns, 128 | silence | cheapest peer | ns, 128 | ratio |\n"
           "|---|--:|--:|--:|---|--:|--:|\n";
    for (const Section& section : sections)
        for (const Entry& own : section.own)
        {
            out << "| " << own.name << " | " << own.ns64 << " | " << own.ns128 << " | " << own.silence
                << " | ";
            const auto [peer, ratio] = compare(section, own);
            if (peer != nullptr)
                out << peer->name << " | " << peer->ns128 << " | " << std::setprecision(2) << ratio
                    << (own.combs > 0 ? " a comb" : "") << std::setprecision(1) << " |\n";
            else
                out << "| | |\n";
        }
}

void printPeers(std::ostream& out, const std::vector<Section>& sections)
{
    out << "\n| Job | Peer | ns, 64 | ns, 128 | |\n|---|---|--:|--:|---|\n";
    for (const Section& section : sections)
        for (const Entry& peer : section.peers)
        {
            out << "| " << section.job << " | " << peer.name << " | ";
            if (peer.note.empty())
                out << peer.ns64 << " | " << peer.ns128 << " | "
                    << (peer.lesser.empty() ? "" : "does less: " + peer.lesser + " ") << "|\n";
            else
                out << "| | " << peer.note << " |\n";
        }
}

void printCombs(std::ostream& out, const std::vector<Section>& sections)
{
    out << "\n| Reverb | combs and all-passes | ns each, 128 |\n|---|--:|--:|\n" << std::setprecision(2);
    for (const Section& section : sections)
        for (const auto* list : {&section.own, &section.peers})
            for (const Entry& entry : *list)
                if (entry.combs > 0 && entry.note.empty())
                    out << "| " << entry.name << " | " << entry.combs << " | " << entry.ns128 / entry.combs
                        << " |\n";
    out << std::setprecision(1);
}

/** The dearest types, four slots of each in turn, as the four effect blocks run. */
void printFourSlots(std::ostream& out, const std::vector<Section>& sections, const Rounds& rounds)
{
    std::vector<std::pair<double, int>> dearest;
    for (const Section& section : sections)
        for (const Entry& own : section.own)
            if (const int type = findType(own.name); type >= 0)
                dearest.emplace_back(own.ns64, type);

    std::sort(dearest.rbegin(), dearest.rend());
    dearest.resize(std::min<std::size_t>(dearest.size(), 3));
    out << "\n| Four slots of | ns, 64 | share of a core at 48 kHz |\n|---|--:|--:|\n";

    for (const auto& [ns, type] : dearest)
    {
        std::vector<std::unique_ptr<Candidate>> slots;
        for (int i = 0; i < 4; ++i)
            slots.push_back(makeOwnEffect(type));
        Chain chain(std::move(slots), 64);
        const double four = timeInTurn({&chain}, 64, rounds).front();
        out << "| " << fxTypes[static_cast<std::size_t>(type)].name << " | " << four << " | "
            << std::setprecision(2) << four * 1e-9 * sampleRate * 100.0 << std::setprecision(1) << " % |\n";
    }
}

/** Where a peer is cheaper, worst first, and where silence costs more than noise. */
void reportDearer(const std::vector<Section>& sections)
{
    std::vector<std::pair<double, std::string>> lines;
    const auto add = [&](const Entry& own, double ratio, const std::string& text)
    {
        if (ratio > 1.0)
            lines.emplace_back(ratio, own.name + text);
    };

    for (const Section& section : sections)
        for (const Entry& own : section.own)
        {
            const auto [peer, ratio] = compare(section, own);
            if (peer != nullptr)
                add(own, ratio,
                    " " + std::to_string(own.ns128) + " ns, " + peer->name + " " +
                        std::to_string(peer->ns128) + " ns" +
                        (own.combs > 0 ? ", compared comb for comb" : ""));
            if (own.silence > 1.15 * own.ns64)
                add(own, own.silence / own.ns64,
                    " in silence " + std::to_string(own.silence) + " ns, in noise " +
                        std::to_string(own.ns64) + " ns");
        }

    std::sort(lines.rbegin(), lines.rend());
    std::cerr << std::fixed << std::setprecision(2);
    for (const auto& [ratio, line] : lines)
        std::cerr << ratio << "  " << line << "\n";
}
} // namespace

int main(int argc, char** argv)
{
    Rounds rounds;
    std::string only, output;
    CLI::App app{"Times Quorel's effects side by side with other effects"};
    app.add_option("--rounds", rounds.count, "Rounds for each effect")->check(CLI::Range(1, 1000));
    app.add_option("--seconds", rounds.seconds, "Length of a round")->check(CLI::Range(0.001, 10.0));
    app.add_option("--only", only, "One job, such as Reverb");
    app.add_option("output", output, "Markdown file; plug-ins write to the standard output")->required();
    CLI11_PARSE(app, argc, argv);

    LV2Host host;
    std::vector<Section> sections = makeSections(host);
    if (!only.empty())
        sections.erase(std::remove_if(sections.begin(), sections.end(),
                                      [&](const Section& section) { return section.job != only; }),
                       sections.end());

    if (sections.empty())
    {
        std::cerr << "There is no job called " << only << "\n";
        return 1;
    }

    for (Section& section : sections)
    {
        std::cerr << section.job << "...\n";
        timeSection(section, rounds);
    }

    std::cerr << "Silence...\n";
    timeAllSilence(sections);

    std::ofstream out(output);
    out << std::fixed << std::setprecision(1);
    printOwn(out, sections);
    printCombs(out, sections);
    printFourSlots(out, sections, rounds);
    printPeers(out, sections);
    reportDearer(sections);

    if (!out.flush())
    {
        std::cerr << "Can't write " << output << "\n";
        return 1;
    }

    return 0;
}
