#include "abi/Clap.h"

#include <cstdint>
#include <type_traits>

// Types of fields and functions. All is settled when this compiles, so that there is nothing to run.

namespace {

template <auto member>
struct Member;

template <typename Field, typename Record, Field Record::*member>
struct Member<member> {
    using Type = Field;
};

template <typename Type, auto... members>
constexpr bool haveType = (std::is_same_v<typename Member<members>::Type, Type> && ...);

using Host = const clap_host*;
using Plugin = const clap_plugin*;
using Menu = const clap_context_menu_target*;
using Builder = const clap_context_menu_builder*;
using Receiver = const clap_preset_discovery_metadata_receiver*;
using Provider = const clap_preset_discovery_provider*;
using Indexer = const clap_preset_discovery_indexer*;
using Factory = const clap_plugin_factory*;
using Discovery = const clap_preset_discovery_factory*;
using Text = const char*;

// The signs of fields; their widths follow from the layouts.
static_assert(
    haveType<int16_t, &clap_event_note::port_index, &clap_event_note::channel, &clap_event_note::key,
             &clap_event_note_expression::port_index, &clap_event_note_expression::channel,
             &clap_event_note_expression::key, &clap_event_param_value::port_index,
             &clap_event_param_value::channel, &clap_event_param_value::key,
             &clap_event_param_mod::port_index, &clap_event_param_mod::channel, &clap_event_param_mod::key>);
static_assert(
    haveType<uint16_t, &clap_event_header::space_id, &clap_event_header::type, &clap_event_midi::port_index,
             &clap_event_midi_sysex::port_index, &clap_event_midi2::port_index,
             &clap_event_transport::tsig_num, &clap_event_transport::tsig_denom>);
static_assert(haveType<int32_t, &clap_event_note::note_id, &clap_event_note_expression::expression_id,
                       &clap_event_note_expression::note_id, &clap_event_param_value::note_id,
                       &clap_event_param_mod::note_id, &clap_event_transport::bar_number,
                       &clap_track_info::audio_channel_count>);
static_assert(haveType<int64_t, &clap_process::steady_time, &clap_event_transport::song_pos_beats,
                       &clap_event_transport::song_pos_seconds, &clap_event_transport::loop_start_beats,
                       &clap_event_transport::loop_end_beats, &clap_event_transport::loop_start_seconds,
                       &clap_event_transport::loop_end_seconds, &clap_event_transport::bar_start>);
static_assert(
    haveType<uint64_t, &clap_audio_buffer::constant_mask, &clap_track_info::flags,
             &clap_project_location_element::flags, &clap_preset_discovery_soundpack::release_timestamp>);
static_assert(
    haveType<double, &clap_event_note::velocity, &clap_event_note_expression::value,
             &clap_event_param_value::value, &clap_event_param_mod::amount, &clap_event_transport::tempo,
             &clap_event_transport::tempo_inc, &clap_param_info::min_value, &clap_param_info::max_value,
             &clap_param_info::default_value>);
static_assert(haveType<unsigned long, &clap_window::x11>);
static_assert(haveType<uint8_t[3], &clap_event_midi::data> && haveType<uint32_t[4], &clap_event_midi2::data>);
static_assert(haveType<float**, &clap_audio_buffer::data32> &&
              haveType<double**, &clap_audio_buffer::data64>);

// The entry, the host and the instance.
static_assert(std::is_same_v<decltype(clap_entry), const clap_plugin_entry_t>);
static_assert(haveType<bool (*)(Text), &clap_plugin_entry::init> &&
              haveType<void (*)(), &clap_plugin_entry::deinit>);
static_assert(haveType<const void* (*)(Text), &clap_plugin_entry::get_factory>);
static_assert(haveType<const void* (*)(Host, Text), &clap_host::get_extension>);
static_assert(haveType<const void* (*)(Plugin, Text), &clap_plugin::get_extension>);
static_assert(haveType<bool (*)(Plugin, double, uint32_t, uint32_t), &clap_plugin::activate>);
static_assert(haveType<int32_t (*)(Plugin, const clap_process*), &clap_plugin::process>);
static_assert(haveType<bool (*)(Plugin), &clap_plugin::init, &clap_plugin::start_processing,
                       &clap_plugin_gui::can_resize, &clap_plugin_gui::show, &clap_plugin_gui::hide>);
static_assert(haveType<void (*)(Plugin), &clap_plugin::destroy, &clap_plugin::deactivate,
                       &clap_plugin::stop_processing, &clap_plugin::reset, &clap_plugin::on_main_thread,
                       &clap_plugin_gui::destroy, &clap_plugin_track_info::changed>);
static_assert(
    haveType<void (*)(Host), &clap_host::request_restart, &clap_host::request_process,
             &clap_host::request_callback, &clap_host_audio_ports_config::rescan,
             &clap_host_params::request_flush, &clap_host_state::mark_dirty, &clap_host_latency::changed,
             &clap_host_tail::changed, &clap_host_gui::resize_hints_changed>);
static_assert(haveType<bool (*)(Host), &clap_host_thread_check::is_main_thread,
                       &clap_host_thread_check::is_audio_thread, &clap_host_context_menu::can_popup,
                       &clap_host_gui::request_show, &clap_host_gui::request_hide>);

// Lists and streams.
static_assert(haveType<uint32_t (*)(const clap_input_events*), &clap_input_events::size>);
static_assert(
    haveType<const clap_event_header* (*)(const clap_input_events*, uint32_t), &clap_input_events::get>);
static_assert(
    haveType<bool (*)(const clap_output_events*, const clap_event_header*), &clap_output_events::try_push>);
static_assert(haveType<int64_t (*)(const clap_istream*, void*, uint64_t), &clap_istream::read>);
static_assert(haveType<int64_t (*)(const clap_ostream*, const void*, uint64_t), &clap_ostream::write>);

// Factories and preset discovery.
static_assert(haveType<uint32_t (*)(Factory), &clap_plugin_factory::get_plugin_count>);
static_assert(haveType<const clap_plugin_descriptor* (*)(Factory, uint32_t),
                       &clap_plugin_factory::get_plugin_descriptor>);
static_assert(haveType<Plugin (*)(Factory, Host, Text), &clap_plugin_factory::create_plugin>);
static_assert(haveType<uint32_t (*)(Discovery), &clap_preset_discovery_factory::count>);
static_assert(haveType<const clap_preset_discovery_provider_descriptor* (*)(Discovery, uint32_t),
                       &clap_preset_discovery_factory::get_descriptor>);
static_assert(haveType<Provider (*)(Discovery, Indexer, Text), &clap_preset_discovery_factory::create>);
static_assert(haveType<bool (*)(Provider), &clap_preset_discovery_provider::init>);
static_assert(haveType<void (*)(Provider), &clap_preset_discovery_provider::destroy>);
static_assert(
    haveType<bool (*)(Provider, uint32_t, Text, Receiver), &clap_preset_discovery_provider::get_metadata>);
static_assert(haveType<const void* (*)(Provider, Text), &clap_preset_discovery_provider::get_extension>);
static_assert(haveType<bool (*)(Indexer, const clap_preset_discovery_filetype*),
                       &clap_preset_discovery_indexer::declare_filetype>);
static_assert(haveType<bool (*)(Indexer, const clap_preset_discovery_location*),
                       &clap_preset_discovery_indexer::declare_location>);
static_assert(haveType<bool (*)(Indexer, const clap_preset_discovery_soundpack*),
                       &clap_preset_discovery_indexer::declare_soundpack>);
static_assert(haveType<const void* (*)(Indexer, Text), &clap_preset_discovery_indexer::get_extension>);
using Metadata = clap_preset_discovery_metadata_receiver;
static_assert(haveType<void (*)(Receiver, int32_t, Text), &Metadata::on_error>);
static_assert(haveType<bool (*)(Receiver, Text, Text), &Metadata::begin_preset>);
static_assert(haveType<void (*)(Receiver, const clap_universal_plugin_id*), &Metadata::add_plugin_id>);
static_assert(haveType<void (*)(Receiver, Text), &Metadata::set_soundpack_id, &Metadata::add_creator,
                       &Metadata::set_description, &Metadata::add_feature>);
static_assert(haveType<void (*)(Receiver, uint32_t), &Metadata::set_flags>);
static_assert(haveType<void (*)(Receiver, uint64_t, uint64_t), &Metadata::set_timestamps>);
static_assert(haveType<void (*)(Receiver, Text, Text), &Metadata::add_extra_info>);

// Ports and parameters.
static_assert(
    haveType<uint32_t (*)(Plugin, bool), &clap_plugin_audio_ports::count, &clap_plugin_note_ports::count>);
static_assert(
    haveType<bool (*)(Plugin, uint32_t, bool, clap_audio_port_info*), &clap_plugin_audio_ports::get>);
static_assert(haveType<bool (*)(Plugin, uint32_t, bool, clap_note_port_info*), &clap_plugin_note_ports::get>);
static_assert(haveType<bool (*)(Host, uint32_t), &clap_host_audio_ports::is_rescan_flag_supported>);
static_assert(haveType<void (*)(Host, uint32_t), &clap_host_audio_ports::rescan,
                       &clap_host_note_ports::rescan, &clap_host_params::rescan>);
static_assert(haveType<uint32_t (*)(Host), &clap_host_note_ports::supported_dialects>);
static_assert(haveType<uint32_t (*)(Plugin), &clap_plugin_audio_ports_config::count,
                       &clap_plugin_audio_ports_config_info::current_config, &clap_plugin_params::count,
                       &clap_plugin_latency::get, &clap_plugin_tail::get>);
static_assert(
    haveType<bool (*)(Plugin, uint32_t, clap_audio_ports_config*), &clap_plugin_audio_ports_config::get>);
static_assert(haveType<bool (*)(Plugin, uint32_t), &clap_plugin_audio_ports_config::select>);
static_assert(haveType<bool (*)(Plugin, uint32_t, uint32_t, bool, clap_audio_port_info*),
                       &clap_plugin_audio_ports_config_info::get>);
static_assert(haveType<bool (*)(Plugin, uint32_t, clap_param_info*), &clap_plugin_params::get_info>);
static_assert(haveType<bool (*)(Plugin, uint32_t, double*), &clap_plugin_params::get_value>);
static_assert(
    haveType<bool (*)(Plugin, uint32_t, double, char*, uint32_t), &clap_plugin_params::value_to_text>);
static_assert(haveType<bool (*)(Plugin, uint32_t, Text, double*), &clap_plugin_params::text_to_value>);
static_assert(haveType<void (*)(Plugin, const clap_input_events*, const clap_output_events*),
                       &clap_plugin_params::flush>);
static_assert(haveType<void (*)(Host, uint32_t, uint32_t), &clap_host_params::clear>);

// State, presets and the small extensions.
static_assert(haveType<bool (*)(Plugin, const clap_ostream*), &clap_plugin_state::save>);
static_assert(haveType<bool (*)(Plugin, const clap_istream*), &clap_plugin_state::load>);
static_assert(haveType<bool (*)(Plugin, uint32_t, Text, Text), &clap_plugin_preset_load::from_location>);
static_assert(
    haveType<void (*)(Host, uint32_t, Text, Text, int32_t, Text), &clap_host_preset_load::on_error>);
static_assert(haveType<void (*)(Host, uint32_t, Text, Text), &clap_host_preset_load::loaded>);
static_assert(haveType<void (*)(Host, int32_t, Text), &clap_host_log::log>);
static_assert(haveType<void (*)(Plugin, uint32_t), &clap_plugin_timer_support::on_timer>);
static_assert(haveType<bool (*)(Host, uint32_t, uint32_t*), &clap_host_timer_support::register_timer>);
static_assert(haveType<bool (*)(Host, uint32_t), &clap_host_timer_support::unregister_timer>);
static_assert(haveType<void (*)(Plugin, int, uint32_t), &clap_plugin_posix_fd_support::on_fd>);
static_assert(haveType<bool (*)(Host, int, uint32_t), &clap_host_posix_fd_support::register_fd,
                       &clap_host_posix_fd_support::modify_fd>);
static_assert(haveType<bool (*)(Host, int), &clap_host_posix_fd_support::unregister_fd>);
static_assert(haveType<double (*)(Plugin), &clap_plugin_gain_adjustment_metering::get>);
static_assert(haveType<bool (*)(Host, clap_track_info*), &clap_host_track_info::get>);
static_assert(haveType<void (*)(Plugin, const clap_project_location_element*, uint32_t),
                       &clap_plugin_project_location::set>);

// Editor and menus.
using Gui = clap_plugin_gui;
static_assert(haveType<bool (*)(Plugin, Text, bool), &Gui::is_api_supported, &Gui::create>);
static_assert(haveType<bool (*)(Plugin, Text*, bool*), &Gui::get_preferred_api>);
static_assert(haveType<bool (*)(Plugin, double), &Gui::set_scale>);
static_assert(haveType<bool (*)(Plugin, uint32_t*, uint32_t*), &Gui::get_size, &Gui::adjust_size>);
static_assert(haveType<bool (*)(Plugin, clap_gui_resize_hints*), &Gui::get_resize_hints>);
static_assert(haveType<bool (*)(Plugin, uint32_t, uint32_t), &Gui::set_size>);
static_assert(haveType<bool (*)(Plugin, const clap_window*), &Gui::set_parent, &Gui::set_transient>);
static_assert(haveType<void (*)(Plugin, Text), &Gui::suggest_title>);
static_assert(haveType<bool (*)(Host, uint32_t, uint32_t), &clap_host_gui::request_resize>);
static_assert(haveType<void (*)(Host, bool), &clap_host_gui::closed>);
static_assert(haveType<bool (*)(Builder, uint32_t, const void*), &clap_context_menu_builder::add_item>);
static_assert(haveType<bool (*)(Builder, uint32_t), &clap_context_menu_builder::supports>);
static_assert(haveType<bool (*)(Plugin, Menu, Builder), &clap_plugin_context_menu::populate>);
static_assert(haveType<bool (*)(Plugin, Menu, uint32_t), &clap_plugin_context_menu::perform>);
static_assert(haveType<bool (*)(Host, Menu, Builder), &clap_host_context_menu::populate>);
static_assert(haveType<bool (*)(Host, Menu, uint32_t), &clap_host_context_menu::perform>);
static_assert(haveType<bool (*)(Host, Menu, int32_t, int32_t, int32_t), &clap_host_context_menu::popup>);

}  // namespace
