#pragma once

#include <string>

namespace quillmark {

class PhRoot;

/// The whole model as one text, so that a test can hold what it expects of a description in one
/// piece. One line per object, indented by two blanks per level, each ended with a line feed:
///
///     root textEncoding=5
///       project Demo longIdentifier="A project"
///         module Engine
///           conversion CM_Speed conversionType=CtRational unit=km/h
///             coeffs 4 -3.0
///             denominatorCoeffs 2
///           conversion TAB::Gear conversionType=CtTable defaultText="?"
///             tableEntry lower=0 upper=0 text="neutral"
///             tableEntry lower=1 upper=2.5 output=7
///           unit km/h displayText="km/h"
///           recordLayout RL_Word
///             dataType baseType=BtUInteger sizeBits=16
///           signal Speed signalKind=Measurement address=0x4000 upperLimit=250.5 matrixDims=4,2,1
///             datatype baseType=BtUInteger sizeBits=16 conversion=CM_Speed
///             virtualMembers A B? C!
///             fixedEvents 1 3
///           function G1
///             signals Speed Torque!
///             functions G2
///           frame F1 scalingUnit=3 rate=10
///             signals Speed
///           commParam XCP protocolType=XCP
///             station
///               protocolParam encoding=LittleEndian
///                 properties
///                   value protocol_version=256
///                   list optional_cmd
///                     value GET_SEED=248
///                     value 7
///               daqTpCapabilities
///                 daqTpCan number=0 canId=1281
///               daqCapabilities configType=2 maxDaq=4 resumeSupported=true
///                 timebase resolution=1 scale=3 byteLength=4 fixed=true
///                 properties
///                   value timestamp_size=4
///                 raster shortName="10ms" channel=0 daqSupported=true priority=0
///                   timebase resolution=10 scale=2
///                   minCycleTime resolution=1 scale=2
///                   packedMode grouping=1 sampleCount=2
///                     alternativeSampleCounts 4 8
///                 daq direction=1 number=0 length=3
///                   odt number=0
///                     odtEntry number=0 address=256 size=4
///             transport transportType=CAN slaveCanId=1281 masterCanId=1280
///               properties
///                 value bitrate=500000
///               canFd maxDlc=8 dataBitrate=2000000
///               flexRayBuffer role=1 number=2
///               station
///           memoryPage Seg use=Code memoryType=Flash address=0x8000 size=1024
///           properties
///             value version="1.0"
///
/// - A line is the kind of the object, its name, its long identifier, and then every field that
///   differs from a fresh object's, in the order of their declaration. Objects and lists that it
///   holds follow on lines of their own, again in the order of their declaration; an empty list and
///   an empty property bag are left out.
/// - An object in a field rather than in a list goes by the name of the field (`timebase`).
/// - What another object defines is told by its name only (`conversion=CM_Speed`, or a list of
///   names): `CM?` is a placeholder and `CM!` an unresolved one. The same marks follow the name of
///   an object on its own line.
/// - An integer reads `4` and a real `4.0` or `1e+22`; addresses and page flags of the description
///   itself are hexadecimal. A value object without content reads `none`, bytes read `bytes:0aff`.
///   A value that is held at all is told, also when it is 0. Other numbers are left out when 0.
/// - Texts stand in double quotes, with `\"`, `\\`, `\n` and `\x..` (two hexadecimal digits) for
///   quotes, backslashes, line feeds, and other control and non-ASCII bytes. So do names with bytes
///   other than letters, digits and `_.:[]()/%*+|-`, and empty names. An object whose name is null
///   has none on its line, and reads `""` where it is referred to.
/// - Codes of the model's enumerations read as their text, or as the number where they have none.
/// - Nothing is made by looking: parts of a station that nobody asked for do not appear.
/// - Vocabulary objects, free texts and the logger do not appear.
std::string dump(const PhRoot& root);

}  // namespace quillmark
