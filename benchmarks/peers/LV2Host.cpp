// SPDX-License-Identifier: GPL-3.0-or-later
#include "LV2Host.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <deque>
#include <lilv/lilv.h>
#include <lv2/atom/atom.h>
#include <lv2/buf-size/buf-size.h>
#include <lv2/core/lv2.h>
#include <lv2/options/options.h>
#include <lv2/parameters/parameters.h>
#include <lv2/urid/urid.h>
#include <lv2/worker/worker.h>
#include <set>

namespace quorel::peers
{
namespace
{
constexpr std::size_t atomBytes = 65536;

using Node = std::unique_ptr<LilvNode, void (*)(LilvNode*)>;

/** Numbers for URIs, from 1 up. */
struct UridTable
{
    std::deque<std::string> uris;

    static LV2_URID map(LV2_URID_Map_Handle handle, const char* uri)
    {
        auto& uris = static_cast<UridTable*>(handle)->uris;
        const auto found = std::find(uris.begin(), uris.end(), uri);
        const auto index = found - uris.begin();
        if (found == uris.end())
            uris.emplace_back(uri);
        return static_cast<LV2_URID>(index + 1);
    }

    static const char* unmap(LV2_URID_Unmap_Handle handle, LV2_URID urid)
    {
        const auto& uris = static_cast<UridTable*>(handle)->uris;
        return urid > 0 && urid <= uris.size() ? uris[urid - 1].c_str() : nullptr;
    }
};
} // namespace

struct LV2Host::Impl
{
    LilvWorld* world = lilv_world_new();
    UridTable urids;
    LV2_URID_Map map{&urids, UridTable::map};
    LV2_URID_Unmap unmap{&urids, UridTable::unmap};

    ~Impl() { lilv_world_free(world); }

    LV2_URID urid(const char* uri) { return UridTable::map(&urids, uri); }

    Node node(const char* uri) { return {lilv_new_uri(world, uri), lilv_node_free}; }
};

namespace
{
/** One instance with its features, ports and worker. */
struct Instance
{
    Instance(LV2Host::Impl& host, const LilvPlugin* plugin, const LV2Setup& setup, int blockLength)
        : minLength(blockLength)
        , maxLength(blockLength)
    {
        const LV2_URID intType = host.urid(LV2_ATOM__Int), floatType = host.urid(LV2_ATOM__Float);
        const auto option = [&](const char* uri, const auto& value, LV2_URID type)
        { return LV2_Options_Option{LV2_OPTIONS_INSTANCE, 0, host.urid(uri), sizeof(value), type, &value}; };
        options = {option(LV2_BUF_SIZE__minBlockLength, minLength, intType),
                   option(LV2_BUF_SIZE__maxBlockLength, maxLength, intType),
                   option(LV2_BUF_SIZE__nominalBlockLength, maxLength, intType),
                   option(LV2_BUF_SIZE__sequenceSize, sequenceSize, intType),
                   option(LV2_PARAMETERS__sampleRate, rate, floatType),
                   {LV2_OPTIONS_INSTANCE, 0, 0, 0, 0, nullptr}};
        features = {{{LV2_URID__map, &host.map},
                     {LV2_URID__unmap, &host.unmap},
                     {LV2_OPTIONS__options, options.data()},
                     {LV2_BUF_SIZE__boundedBlockLength, nullptr},
                     {LV2_BUF_SIZE__fixedBlockLength, nullptr},
                     {LV2_BUF_SIZE__powerOf2BlockLength, nullptr},
                     {LV2_WORKER__schedule, &schedule}}};
        for (std::size_t i = 0; i < features.size(); ++i)
            featureList[i] = &features[i];

        lilv = lilv_plugin_instantiate(plugin, sampleRate, featureList.data());
        if (lilv == nullptr)
            return;

        worker = static_cast<const LV2_Worker_Interface*>(
            lilv_instance_get_extension_data(lilv, LV2_WORKER__interface));
        connectPorts(host, plugin, setup, static_cast<std::size_t>(blockLength));
        lilv_instance_activate(lilv);
    }

    ~Instance()
    {
        if (lilv == nullptr)
            return;

        lilv_instance_deactivate(lilv);
        lilv_instance_free(lilv);
    }

    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;

    void connectPorts(LV2Host::Impl& host, const LilvPlugin* plugin, const LV2Setup& setup,
                      std::size_t length)
    {
        const Node audio = host.node(LV2_CORE__AudioPort), control = host.node(LV2_CORE__ControlPort);
        const Node input = host.node(LV2_CORE__InputPort), atom = host.node(LV2_ATOM__AtomPort);
        const auto count = lilv_plugin_get_num_ports(plugin);
        std::vector<float> defaults(count);
        lilv_plugin_get_port_ranges_float(plugin, nullptr, nullptr, defaults.data());

        for (std::uint32_t i = 0; i < count; ++i)
        {
            const LilvPort* port = lilv_plugin_get_port_by_index(plugin, i);
            const bool isInput = lilv_port_is_a(plugin, port, input.get());

            if (lilv_port_is_a(plugin, port, audio.get()))
            {
                auto& list = isInput ? inputs : outputs;
                list.emplace_back(length);
                lilv_instance_connect_port(lilv, i, list.back().data());
            }
            else if (lilv_port_is_a(plugin, port, control.get()))
            {
                const char* symbol = lilv_node_as_string(lilv_port_get_symbol(plugin, port));
                float value = std::isnan(defaults[i]) ? 0.0f : defaults[i];
                for (const auto& [name, wanted] : setup.controls)
                    if (name == symbol)
                    {
                        value = wanted;
                        ++controlsSet;
                    }
                controls.push_back(value);
                lilv_instance_connect_port(lilv, i, &controls.back());
            }
            else if (lilv_port_is_a(plugin, port, atom.get()))
            {
                atoms.emplace_back(new std::uint64_t[atomBytes / sizeof(std::uint64_t)]());
                (isInput ? atomInputs : atomOutputs)
                    .push_back(reinterpret_cast<LV2_Atom*>(atoms.back().get()));
                lilv_instance_connect_port(lilv, i, atoms.back().get());
            }
            else
                lilv_instance_connect_port(lilv, i, nullptr);
        }

        sequenceType = host.urid(LV2_ATOM__Sequence);
        chunkType = host.urid(LV2_ATOM__Chunk);
    }

    void run(int numSamples)
    {
        for (LV2_Atom* atom : atomInputs)
            *atom = {sizeof(LV2_Atom_Sequence_Body), sequenceType};
        for (LV2_Atom* atom : atomOutputs)
            *atom = {static_cast<std::uint32_t>(atomBytes - sizeof(LV2_Atom)), chunkType};

        lilv_instance_run(lilv, static_cast<std::uint32_t>(numSamples));

        if (worker == nullptr)
            return;

        for (const auto& answer : std::exchange(answers, {}))
            worker->work_response(lilv_instance_get_handle(lilv), static_cast<std::uint32_t>(answer.size()),
                                  answer.data());
        if (worker->end_run != nullptr)
            worker->end_run(lilv_instance_get_handle(lilv));
    }

    static LV2_Worker_Status work(LV2_Worker_Schedule_Handle handle, std::uint32_t size, const void* data)
    {
        auto& self = *static_cast<Instance*>(handle);
        if (self.worker == nullptr)
            return LV2_WORKER_ERR_UNKNOWN;
        return self.worker->work(lilv_instance_get_handle(self.lilv), answer, handle, size, data);
    }

    static LV2_Worker_Status answer(LV2_Worker_Respond_Handle handle, std::uint32_t size, const void* data)
    {
        const auto* bytes = static_cast<const char*>(data);
        static_cast<Instance*>(handle)->answers.emplace_back(bytes, bytes + size);
        return LV2_WORKER_SUCCESS;
    }

    std::int32_t minLength, maxLength, sequenceSize = atomBytes;
    float rate = static_cast<float>(sampleRate);
    LV2_Worker_Schedule schedule{this, work};
    std::array<LV2_Options_Option, 6> options{};
    std::array<LV2_Feature, 7> features{};
    std::array<const LV2_Feature*, 8> featureList{};

    LilvInstance* lilv = nullptr;
    const LV2_Worker_Interface* worker = nullptr;
    std::vector<std::vector<char>> answers;
    std::vector<std::vector<float>> inputs, outputs;
    std::deque<float> controls; // addresses stay
    std::vector<std::unique_ptr<std::uint64_t[]>> atoms;
    std::vector<LV2_Atom*> atomInputs, atomOutputs;
    LV2_URID sequenceType = 0, chunkType = 0;
    std::size_t controlsSet = 0;
};

struct LV2Effect : Candidate
{
    void process(const float* inL, const float* inR, float* outL, float* outR, int numSamples) override
    {
        Instance& first = *instances.front();
        Instance& last = *instances.back();
        const std::size_t second = instances.size() == 1 ? 1 : 0;

        std::copy_n(inL, numSamples, first.inputs[0].begin());
        std::copy_n(inR, numSamples, last.inputs[second].begin());
        for (auto& instance : instances)
            instance->run(numSamples);
        std::copy_n(first.outputs[0].begin(), numSamples, outL);
        std::copy_n(last.outputs[second].begin(), numSamples, outR);
    }

    std::vector<std::unique_ptr<Instance>> instances;
};

/** The first feature that the plug-in requires and Instance lacks; empty if there is none. */
std::string missingFeature(const LilvPlugin* plugin)
{
    static const std::set<std::string> known{LV2_URID__map,
                                             LV2_URID__unmap,
                                             LV2_OPTIONS__options,
                                             LV2_BUF_SIZE__boundedBlockLength,
                                             LV2_BUF_SIZE__fixedBlockLength,
                                             LV2_BUF_SIZE__powerOf2BlockLength,
                                             LV2_WORKER__schedule};
    const std::unique_ptr<LilvNodes, void (*)(LilvNodes*)> required(lilv_plugin_get_required_features(plugin),
                                                                    lilv_nodes_free);
    for (LilvIter* i = lilv_nodes_begin(required.get()); !lilv_nodes_is_end(required.get(), i);
         i = lilv_nodes_next(required.get(), i))
    {
        std::string uri = lilv_node_as_string(lilv_nodes_get(required.get(), i));
        if (known.count(uri) == 0)
            return uri;
    }
    return {};
}
} // namespace

LV2Host::LV2Host()
    : impl(std::make_unique<Impl>())
{
    lilv_world_load_all(impl->world);
}

LV2Host::~LV2Host() = default;

std::unique_ptr<Candidate> LV2Host::load(const LV2Setup& setup, int blockLength, std::string& problem)
{
    const Node uri = impl->node(setup.uri.c_str());
    const LilvPlugin* plugin = lilv_plugins_get_by_uri(lilv_world_get_all_plugins(impl->world), uri.get());

    if (plugin == nullptr)
    {
        problem = "not installed";
        return nullptr;
    }

    if (const std::string feature = missingFeature(plugin); !feature.empty())
    {
        problem = "needs " + feature;
        return nullptr;
    }

    auto effect = std::make_unique<LV2Effect>();
    std::size_t channels = 0;

    do
    {
        auto instance = std::make_unique<Instance>(*impl, plugin, setup, blockLength);
        if (instance->lilv == nullptr)
        {
            problem = "doesn't start";
            return nullptr;
        }

        if (instance->controlsSet != setup.controls.size())
        {
            problem = "has other controls";
            return nullptr;
        }

        channels = std::min(instance->inputs.size(), instance->outputs.size());
        if (channels == 0)
        {
            problem = "is no effect";
            return nullptr;
        }

        effect->instances.push_back(std::move(instance));
    } while (channels == 1 && effect->instances.size() < 2);

    return effect;
}
} // namespace quorel::peers
