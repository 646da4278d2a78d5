#include "abi/Clap.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

// Hosts share these records with us without a common source, so that nothing but numbers can hold them
// together. The same tests run on the installed headers where there are some.

namespace {

struct Layout {
    std::size_t size;
    std::vector<std::size_t> offsets;  // of the fields, in bytes
    bool operator==(const Layout&) const = default;
};

template <typename Record, typename... Field>
Layout layoutOf(Field Record::*... fields)
{
    const auto record = std::make_unique<Record>();
    const auto address = [](const auto& thing) {
        return reinterpret_cast<std::uintptr_t>(std::addressof(thing));
    };
    return {sizeof(Record), {(address((*record).*fields) - address(*record))...}};
}

struct NamedLayout {
    const char* name;
    Layout layout;
    Layout expected;
};

void expectLayouts(const std::vector<NamedLayout>& rows)
{
    for (const auto& [name, layout, expected] : rows) {
        EXPECT_EQ(layout.size, expected.size) << name;
        EXPECT_EQ(layout.offsets, expected.offsets) << name;
    }
}

}  // namespace

// Offsets by the rule of the 64-bit C interface: each field at the next multiple of its own size (8 for
// pointers, 1 for bool and char), the size rounded up to the largest of them. 256 and 1024 are the sizes of
// names and paths.

TEST(ClapAbi, BasicRecordsHaveTheirPublishedLayout)
{
    expectLayouts({
        {"clap_version",
         layoutOf(&clap_version::major, &clap_version::minor, &clap_version::revision),
         {12, {0, 4, 8}}},
        {"clap_color",
         layoutOf(&clap_color::alpha, &clap_color::red, &clap_color::green, &clap_color::blue),
         {4, {0, 1, 2, 3}}},
        // 12 bytes of version, then 4 of padding before the first pointer
        {"clap_host",
         layoutOf(&clap_host::clap_version, &clap_host::host_data, &clap_host::name, &clap_host::vendor,
                  &clap_host::url, &clap_host::version, &clap_host::get_extension,
                  &clap_host::request_restart, &clap_host::request_process, &clap_host::request_callback),
         {88, {0, 16, 24, 32, 40, 48, 56, 64, 72, 80}}},
        {"clap_plugin_descriptor",
         layoutOf(&clap_plugin_descriptor::clap_version, &clap_plugin_descriptor::id,
                  &clap_plugin_descriptor::name, &clap_plugin_descriptor::vendor,
                  &clap_plugin_descriptor::url, &clap_plugin_descriptor::manual_url,
                  &clap_plugin_descriptor::support_url, &clap_plugin_descriptor::version,
                  &clap_plugin_descriptor::description, &clap_plugin_descriptor::features),
         {88, {0, 16, 24, 32, 40, 48, 56, 64, 72, 80}}},
        {"clap_plugin_entry",
         layoutOf(&clap_plugin_entry::clap_version, &clap_plugin_entry::init, &clap_plugin_entry::deinit,
                  &clap_plugin_entry::get_factory),
         {40, {0, 16, 24, 32}}},
    });
}

TEST(ClapAbi, EventsAndBuffersHaveTheirPublishedLayout)
{
    expectLayouts({
        {"clap_event_header",
         layoutOf(&clap_event_header::size, &clap_event_header::time, &clap_event_header::space_id,
                  &clap_event_header::type, &clap_event_header::flags),
         {16, {0, 4, 8, 10, 12}}},
        {"clap_event_note",
         layoutOf(&clap_event_note::header, &clap_event_note::note_id, &clap_event_note::port_index,
                  &clap_event_note::channel, &clap_event_note::key, &clap_event_note::velocity),
         {40, {0, 16, 20, 22, 24, 32}}},
        {"clap_event_note_expression",
         layoutOf(&clap_event_note_expression::header, &clap_event_note_expression::expression_id,
                  &clap_event_note_expression::note_id, &clap_event_note_expression::port_index,
                  &clap_event_note_expression::channel, &clap_event_note_expression::key,
                  &clap_event_note_expression::value),
         {40, {0, 16, 20, 24, 26, 28, 32}}},
        {"clap_event_param_value",
         layoutOf(&clap_event_param_value::header, &clap_event_param_value::param_id,
                  &clap_event_param_value::cookie, &clap_event_param_value::note_id,
                  &clap_event_param_value::port_index, &clap_event_param_value::channel,
                  &clap_event_param_value::key, &clap_event_param_value::value),
         {56, {0, 16, 24, 32, 36, 38, 40, 48}}},
        {"clap_event_param_mod",
         layoutOf(&clap_event_param_mod::header, &clap_event_param_mod::param_id,
                  &clap_event_param_mod::cookie, &clap_event_param_mod::note_id,
                  &clap_event_param_mod::port_index, &clap_event_param_mod::channel,
                  &clap_event_param_mod::key, &clap_event_param_mod::amount),
         {56, {0, 16, 24, 32, 36, 38, 40, 48}}},
        {"clap_event_param_gesture",
         layoutOf(&clap_event_param_gesture::header, &clap_event_param_gesture::param_id),
         {20, {0, 16}}},
        {"clap_event_transport",
         layoutOf(&clap_event_transport::header, &clap_event_transport::flags,
                  &clap_event_transport::song_pos_beats, &clap_event_transport::song_pos_seconds,
                  &clap_event_transport::tempo, &clap_event_transport::tempo_inc,
                  &clap_event_transport::loop_start_beats, &clap_event_transport::loop_end_beats,
                  &clap_event_transport::loop_start_seconds, &clap_event_transport::loop_end_seconds,
                  &clap_event_transport::bar_start, &clap_event_transport::bar_number,
                  &clap_event_transport::tsig_num, &clap_event_transport::tsig_denom),
         {104, {0, 16, 24, 32, 40, 48, 56, 64, 72, 80, 88, 96, 100, 102}}},
        // 18 + 3 bytes, rounded up to a multiple of 4
        {"clap_event_midi",
         layoutOf(&clap_event_midi::header, &clap_event_midi::port_index, &clap_event_midi::data),
         {24, {0, 16, 18}}},
        {"clap_event_midi_sysex",
         layoutOf(&clap_event_midi_sysex::header, &clap_event_midi_sysex::port_index,
                  &clap_event_midi_sysex::buffer, &clap_event_midi_sysex::size),
         {40, {0, 16, 24, 32}}},
        {"clap_event_midi2",
         layoutOf(&clap_event_midi2::header, &clap_event_midi2::port_index, &clap_event_midi2::data),
         {36, {0, 16, 20}}},
        {"clap_audio_buffer",
         layoutOf(&clap_audio_buffer::data32, &clap_audio_buffer::data64, &clap_audio_buffer::channel_count,
                  &clap_audio_buffer::latency, &clap_audio_buffer::constant_mask),
         {32, {0, 8, 16, 20, 24}}},
        {"clap_process",
         layoutOf(&clap_process::steady_time, &clap_process::frames_count, &clap_process::transport,
                  &clap_process::audio_inputs, &clap_process::audio_outputs,
                  &clap_process::audio_inputs_count, &clap_process::audio_outputs_count,
                  &clap_process::in_events, &clap_process::out_events),
         {64, {0, 8, 16, 24, 32, 40, 44, 48, 56}}},
    });
}

TEST(ClapAbi, RecordsOfExtensionsHaveTheirPublishedLayout)
{
    expectLayouts({
        {"clap_param_info",
         layoutOf(&clap_param_info::id, &clap_param_info::flags, &clap_param_info::cookie,
                  &clap_param_info::name, &clap_param_info::module, &clap_param_info::min_value,
                  &clap_param_info::max_value, &clap_param_info::default_value),
         {1320, {0, 4, 8, 16, 272, 1296, 1304, 1312}}},
        {"clap_audio_port_info",
         layoutOf(&clap_audio_port_info::id, &clap_audio_port_info::name, &clap_audio_port_info::flags,
                  &clap_audio_port_info::channel_count, &clap_audio_port_info::port_type,
                  &clap_audio_port_info::in_place_pair),
         {288, {0, 4, 260, 264, 272, 280}}},
        {"clap_audio_ports_config",
         layoutOf(&clap_audio_ports_config::id, &clap_audio_ports_config::name,
                  &clap_audio_ports_config::input_port_count, &clap_audio_ports_config::output_port_count,
                  &clap_audio_ports_config::has_main_input,
                  &clap_audio_ports_config::main_input_channel_count,
                  &clap_audio_ports_config::main_input_port_type, &clap_audio_ports_config::has_main_output,
                  &clap_audio_ports_config::main_output_channel_count,
                  &clap_audio_ports_config::main_output_port_type),
         {304, {0, 4, 260, 264, 268, 272, 280, 288, 292, 296}}},
        {"clap_note_port_info",
         layoutOf(&clap_note_port_info::id, &clap_note_port_info::supported_dialects,
                  &clap_note_port_info::preferred_dialect, &clap_note_port_info::name),
         {268, {0, 4, 8, 12}}},
        {"clap_window",
         layoutOf(&clap_window::api, &clap_window::cocoa, &clap_window::x11, &clap_window::win32,
                  &clap_window::ptr),
         {16, {0, 8, 8, 8, 8}}},
        {"clap_gui_resize_hints",
         layoutOf(&clap_gui_resize_hints::can_resize_horizontally,
                  &clap_gui_resize_hints::can_resize_vertically,
                  &clap_gui_resize_hints::preserve_aspect_ratio, &clap_gui_resize_hints::aspect_ratio_width,
                  &clap_gui_resize_hints::aspect_ratio_height),
         {12, {0, 1, 2, 4, 8}}},
        {"clap_context_menu_target",
         layoutOf(&clap_context_menu_target::kind, &clap_context_menu_target::id),
         {8, {0, 4}}},
        {"clap_context_menu_entry",
         layoutOf(&clap_context_menu_entry::label, &clap_context_menu_entry::is_enabled,
                  &clap_context_menu_entry::action_id),
         {16, {0, 8, 12}}},
        {"clap_context_menu_check_entry",
         layoutOf(&clap_context_menu_check_entry::label, &clap_context_menu_check_entry::is_enabled,
                  &clap_context_menu_check_entry::is_checked, &clap_context_menu_check_entry::action_id),
         {16, {0, 8, 9, 12}}},
        {"clap_context_menu_item_title",
         layoutOf(&clap_context_menu_item_title::title, &clap_context_menu_item_title::is_enabled),
         {16, {0, 8}}},
        {"clap_context_menu_submenu",
         layoutOf(&clap_context_menu_submenu::label, &clap_context_menu_submenu::is_enabled),
         {16, {0, 8}}},
        {"clap_track_info",
         layoutOf(&clap_track_info::flags, &clap_track_info::name, &clap_track_info::color,
                  &clap_track_info::audio_channel_count, &clap_track_info::audio_port_type),
         {280, {0, 8, 264, 268, 272}}},
        {"clap_project_location_element",
         layoutOf(&clap_project_location_element::flags, &clap_project_location_element::kind,
                  &clap_project_location_element::track_kind, &clap_project_location_element::index,
                  &clap_project_location_element::id, &clap_project_location_element::name,
                  &clap_project_location_element::color),
         {1304, {0, 8, 12, 16, 20, 1044, 1300}}},
    });
}

TEST(ClapAbi, RecordsOfPresetDiscoveryHaveTheirPublishedLayout)
{
    using Location = clap_preset_discovery_location;
    using Soundpack = clap_preset_discovery_soundpack;
    using Descriptor = clap_preset_discovery_provider_descriptor;
    using Indexer = clap_preset_discovery_indexer;
    expectLayouts({
        {"location",
         layoutOf(&Location::flags, &Location::name, &Location::kind, &Location::location),
         {32, {0, 8, 16, 24}}},
        {"soundpack",
         layoutOf(&Soundpack::flags, &Soundpack::id, &Soundpack::name, &Soundpack::description,
                  &Soundpack::homepage_url, &Soundpack::vendor, &Soundpack::image_path,
                  &Soundpack::release_timestamp),
         {64, {0, 8, 16, 24, 32, 40, 48, 56}}},
        {"provider descriptor",
         layoutOf(&Descriptor::clap_version, &Descriptor::id, &Descriptor::name, &Descriptor::vendor),
         {40, {0, 16, 24, 32}}},
        {"indexer",
         layoutOf(&Indexer::clap_version, &Indexer::name, &Indexer::vendor, &Indexer::url, &Indexer::version,
                  &Indexer::indexer_data, &Indexer::declare_filetype, &Indexer::declare_location,
                  &Indexer::declare_soundpack, &Indexer::get_extension),
         {88, {0, 16, 24, 32, 40, 48, 56, 64, 72, 80}}},
    });
}

TEST(ClapAbi, TablesAreNothingButPointersInOrder)
{
    using Receiver = clap_preset_discovery_metadata_receiver;
    using Provider = clap_preset_discovery_provider;
    using Discovery = clap_preset_discovery_factory;
    using Factory = clap_plugin_factory;
    using FileType = clap_preset_discovery_filetype;
    using Gui = clap_plugin_gui;
    using HostGui = clap_host_gui;
    using Menu = clap_host_context_menu;
    const std::vector<Layout> tables{
        layoutOf(&clap_universal_plugin_id::abi, &clap_universal_plugin_id::id),
        layoutOf(&clap_plugin::desc, &clap_plugin::plugin_data, &clap_plugin::init, &clap_plugin::destroy,
                 &clap_plugin::activate, &clap_plugin::deactivate, &clap_plugin::start_processing,
                 &clap_plugin::stop_processing, &clap_plugin::reset, &clap_plugin::process,
                 &clap_plugin::get_extension, &clap_plugin::on_main_thread),
        layoutOf(&clap_input_events::ctx, &clap_input_events::size, &clap_input_events::get),
        layoutOf(&clap_output_events::ctx, &clap_output_events::try_push),
        layoutOf(&clap_istream::ctx, &clap_istream::read),
        layoutOf(&clap_ostream::ctx, &clap_ostream::write),
        layoutOf(&Factory::get_plugin_count, &Factory::get_plugin_descriptor, &Factory::create_plugin),
        layoutOf(&FileType::name, &FileType::description, &FileType::file_extension),
        layoutOf(&Receiver::receiver_data, &Receiver::on_error, &Receiver::begin_preset,
                 &Receiver::add_plugin_id, &Receiver::set_soundpack_id, &Receiver::set_flags,
                 &Receiver::add_creator, &Receiver::set_description, &Receiver::set_timestamps,
                 &Receiver::add_feature, &Receiver::add_extra_info),
        layoutOf(&Provider::desc, &Provider::provider_data, &Provider::init, &Provider::destroy,
                 &Provider::get_metadata, &Provider::get_extension),
        layoutOf(&Discovery::count, &Discovery::get_descriptor, &Discovery::create),
        layoutOf(&clap_plugin_audio_ports::count, &clap_plugin_audio_ports::get),
        layoutOf(&clap_host_audio_ports::is_rescan_flag_supported, &clap_host_audio_ports::rescan),
        layoutOf(&clap_plugin_audio_ports_config::count, &clap_plugin_audio_ports_config::get,
                 &clap_plugin_audio_ports_config::select),
        layoutOf(&clap_plugin_audio_ports_config_info::current_config,
                 &clap_plugin_audio_ports_config_info::get),
        layoutOf(&clap_host_audio_ports_config::rescan),
        layoutOf(&clap_plugin_note_ports::count, &clap_plugin_note_ports::get),
        layoutOf(&clap_host_note_ports::supported_dialects, &clap_host_note_ports::rescan),
        layoutOf(&clap_plugin_params::count, &clap_plugin_params::get_info, &clap_plugin_params::get_value,
                 &clap_plugin_params::value_to_text, &clap_plugin_params::text_to_value,
                 &clap_plugin_params::flush),
        layoutOf(&clap_host_params::rescan, &clap_host_params::clear, &clap_host_params::request_flush),
        layoutOf(&clap_plugin_state::save, &clap_plugin_state::load),
        layoutOf(&clap_host_state::mark_dirty),
        layoutOf(&clap_plugin_preset_load::from_location),
        layoutOf(&clap_host_preset_load::on_error, &clap_host_preset_load::loaded),
        layoutOf(&clap_plugin_latency::get),
        layoutOf(&clap_host_latency::changed),
        layoutOf(&clap_plugin_tail::get),
        layoutOf(&clap_host_tail::changed),
        layoutOf(&clap_host_log::log),
        layoutOf(&clap_host_thread_check::is_main_thread, &clap_host_thread_check::is_audio_thread),
        layoutOf(&clap_plugin_timer_support::on_timer),
        layoutOf(&clap_host_timer_support::register_timer, &clap_host_timer_support::unregister_timer),
        layoutOf(&clap_plugin_posix_fd_support::on_fd),
        layoutOf(&clap_host_posix_fd_support::register_fd, &clap_host_posix_fd_support::modify_fd,
                 &clap_host_posix_fd_support::unregister_fd),
        layoutOf(&clap_plugin_gain_adjustment_metering::get),
        layoutOf(&clap_plugin_track_info::changed),
        layoutOf(&clap_host_track_info::get),
        layoutOf(&clap_plugin_project_location::set),
        layoutOf(&clap_context_menu_builder::ctx, &clap_context_menu_builder::add_item,
                 &clap_context_menu_builder::supports),
        layoutOf(&clap_plugin_context_menu::populate, &clap_plugin_context_menu::perform),
        layoutOf(&Menu::populate, &Menu::perform, &Menu::can_popup, &Menu::popup),
        layoutOf(&Gui::is_api_supported, &Gui::get_preferred_api, &Gui::create, &Gui::destroy,
                 &Gui::set_scale, &Gui::get_size, &Gui::can_resize, &Gui::get_resize_hints, &Gui::adjust_size,
                 &Gui::set_size, &Gui::set_parent, &Gui::set_transient, &Gui::suggest_title, &Gui::show,
                 &Gui::hide),
        layoutOf(&HostGui::resize_hints_changed, &HostGui::request_resize, &HostGui::request_show,
                 &HostGui::request_hide, &HostGui::closed),
    };
    for (std::size_t table = 0; table < tables.size(); ++table) {
        Layout expected{8 * tables[table].offsets.size(), {}};
        for (std::size_t offset = 0; offset < expected.size; offset += 8)
            expected.offsets.push_back(offset);
        EXPECT_EQ(tables[table], expected) << "table " << table << " of the list above";
    }
}
