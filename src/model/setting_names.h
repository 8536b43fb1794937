#pragma once

#include <string_view>

/// The names under which a description's settings are kept in property bags (PhProperties) and in
/// the lists of values in them. Readers, output and comparison name a setting only in this way.
namespace quillmark::setting {

// Of a module.
inline constexpr std::string_view kVersion = "mod_par/version";
inline constexpr std::string_view kEpk = "mod_par/epk";
inline constexpr std::string_view kEpkAddress = "mod_par/addr_epk";
inline constexpr std::string_view kEcu = "mod_par/ecu";

// Of a protocol.
inline constexpr std::string_view kOptionalCommands = "optional_cmd";  ///< a list
inline constexpr std::string_view kCcpByteOrderCode = "ccp_byteorder_code";
inline constexpr std::string_view kSeedKeyDllCalibration = "seed_key_dll_name_cal";
inline constexpr std::string_view kSeedKeyDllDaq = "seed_key_dll_name_daq";
inline constexpr std::string_view kSeedKeyDllProgramming = "seed_key_dll_name_pgm";
inline constexpr std::string_view kChecksumDll = "checksum_dll_name";
inline constexpr std::string_view kChecksumProcedure = "checksum_procedure";
inline constexpr std::string_view kChecksumMaxBlockLength = "checksum_max_block_length";
inline constexpr std::string_view kChecksumCalculation = "checksum_calculation";
inline constexpr std::string_view kXcpVersion = "xcp_version";
inline constexpr std::string_view kT1 = "t1";
inline constexpr std::string_view kT2 = "t2";
inline constexpr std::string_view kT3 = "t3";
inline constexpr std::string_view kT4 = "t4";
inline constexpr std::string_view kT5 = "t5";
inline constexpr std::string_view kT6 = "t6";
inline constexpr std::string_view kT7 = "t7";
inline constexpr std::string_view kMaxCto = "max_cto";
inline constexpr std::string_view kMaxDto = "max_dto";
inline constexpr std::string_view kXcpByteOrderCode = "xcp_byteorder_code";
inline constexpr std::string_view kAddressGranularity = "address_granularity";
inline constexpr std::string_view kSeedAndKeyFunction = "seed_and_key_external_function";
inline constexpr std::string_view kMasterBlockMode = "master_block_mode_supported";
inline constexpr std::string_view kMaxBs = "max_bs";
inline constexpr std::string_view kMinSt = "min_st";
inline constexpr std::string_view kSlaveBlockMode = "slave_block_mode_supported";
inline constexpr std::string_view kQueueSize = "queue_size";

// Of a transport.
inline constexpr std::string_view kBitrate = "bitrate";
inline constexpr std::string_view kBytesOnly = "bytes_only";
inline constexpr std::string_view kMaxDlcRequired = "max_dlc_required";
inline constexpr std::string_view kHostName = "hostname";
inline constexpr std::string_view kIpv6 = "ipv6";
inline constexpr std::string_view kPort = "port";
inline constexpr std::string_view kPacketAlignment = "packet_alignment";
inline constexpr std::string_view kHeaderType = "header_type";
inline constexpr std::string_view kT1FlexRay = "t1_flx";
inline constexpr std::string_view kNax = "nax";

// Of a FlexRay buffer.
inline constexpr std::string_view kChannel = "channel";
inline constexpr std::string_view kOffset = "offset";
inline constexpr std::string_view kCycleRepetition = "cycle_repetition";

// Of data acquisition.
inline constexpr std::string_view kSources = "sources";           ///< a list
inline constexpr std::string_view kEventGroups = "event_groups";  ///< a list
inline constexpr std::string_view kDaqMode = "daq_mode";
inline constexpr std::string_view kAddressExtension = "address_extension";
inline constexpr std::string_view kGranularityStim = "granularity_odt_entry_size_stim";
inline constexpr std::string_view kMaxEntrySizeStim = "max_odt_entry_size_stim";
inline constexpr std::string_view kTimestampSize = "timestamp_size";
inline constexpr std::string_view kTimestampResolution = "timestamp_resolution";
inline constexpr std::string_view kCanIdFirst = "can_id_first";
inline constexpr std::string_view kCanIdLast = "can_id_last";
inline constexpr std::string_view kPacketIdFirst = "packet_id_first";
inline constexpr std::string_view kPacketIdLast = "packet_id_last";
inline constexpr std::string_view kParameterIdFirst = "parameter_id_first";
inline constexpr std::string_view kParameterIdLast = "parameter_id_last";

// Of a source, and of a group of event channels.
inline constexpr std::string_view kScalingUnit = "scaling_unit";
inline constexpr std::string_view kPeriod = "period";
inline constexpr std::string_view kDaqNumber = "daq_number";
inline constexpr std::string_view kCanIdVariable = "can_id_variable";
inline constexpr std::string_view kCanIdFixed = "can_id_fixed";
inline constexpr std::string_view kFirstPid = "first_pid";
inline constexpr std::string_view kRaster = "raster";
inline constexpr std::string_view kSourceId = "source_id";
inline constexpr std::string_view kShortName = "short_name";
inline constexpr std::string_view kRasters = "rasters";

// Of an event channel.
inline constexpr std::string_view kMaxDaqList = "max_daq_list";

}  // namespace quillmark::setting
