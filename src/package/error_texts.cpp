#include "package/error_texts.h"

#include <array>
#include <cstddef>

namespace quillmark {
namespace {

struct TextRow {
    int code;
    std::string_view text;
};

// Scripts look for these texts, so that their blanks, spelling and missing parentheses stay.
constexpr std::array kErrorTexts = {
    TextRow{0, "Everything is OK"},
    TextRow{1, "Target does not exist!"},
    TextRow{4, "Moving up one level in the directory failed (clean up i %1)"},
    TextRow{5, "Moving up one level in the directory failed (clean up ii)"},
    TextRow{6, "Moving up one level in the directory failed (clean up iii)"},
    TextRow{7, "Moving up one level in the directory failed (clean up iv)"},
    TextRow{8, "Moving up one level in the directory failed (clean up v)"},
    TextRow{10, "Cleanup of temp directory failed! (i)"},
    TextRow{11, "Cleanup of temp directory failed! (ii)"},
    TextRow{12, "Cleanup of temp directory failed! (iii)"},
    TextRow{13, "Cleanup of temp directory failed! (iv)"},
    TextRow{14, "Cleanup of temp directory failed! (v)"},
    TextRow{15, "Cleanup of temp directory failed! (vi)"},
    TextRow{16, "Cleanup of temp directory failed! (vii)"},
    TextRow{17, "Cleanup of temp directory failed! (viii)"},
    TextRow{18, "Cleanup of temp directory failed! (ix)"},
    TextRow{19, "Cleanup of temp directory failed! (x)"},
    TextRow{20, "Directory 'descriptionfiles' does not exist!"},
    TextRow{21, "Database file \"%1\" does not exist!"},
    TextRow{22, "Copying database file \"%1\" failed!"},
    TextRow{23, "Directory 'deviceconf' does not exist!"},
    TextRow{24, "Directory 'deviceconf' does not exist! (at copying vtl file)"},
    TextRow{25, "Directory 'deviceconf' does not exist! (at copying cfg file)"},
    TextRow{26, "Directory 'deviceconf' does not exist! (at archiving)"},
    TextRow{27, "Directory 'deviceconf' does not exist! (at cleanup)"},
    TextRow{28, " Moving up one level at DEVCONF SIGTRAK files directory failed! (at copying cfg)"},
    TextRow{29, "Directory 'vistrel' does not exist! (at coyping vtl file)"},
    TextRow{30, "Directory 'vistrel' does not exist! (at archiving)"},
    TextRow{31, "Directory 'descriptionfiles' does not exist! (at archiving"},
    TextRow{32, "Directory 'descriptionfiles' does not exist! (at cleanup"},
    TextRow{34, "Configuration file does not exist!"},
    TextRow{35, "VTL file does not exist!"},
    TextRow{36, " Moving up one level at DEVCONF SIGTRAK files directory failed! (at cleanup)"},
    TextRow{37, " Moving up one level at DEVCONF SIGTRAK files directory failed! (at archiving)"},
    TextRow{39, "Copying configuration file failed!"},
    TextRow{40, "Vistrel copying failed!"},
    TextRow{41, "DbTypeDbc COMPARE"},
    TextRow{42, "eDbTypeLdf COMPARE"},
    TextRow{43, "eDbTypeFibex_COMPARE"},
    TextRow{44, "Writing structure file failed!"},
    TextRow{45, "File could not be written"},
    TextRow{46, "No write permission in target temp directory!"},
    TextRow{47, "No access/write permission in target directory !"},
    TextRow{48, "Creation of temp DESC files directory failed!"},
    TextRow{49, "Creation of temp USER files directory failed!"},
    TextRow{50, "Creation of temp DEVCONF files directory failed!"},
    TextRow{51, "No access/write permission DEVCONF files directory ! "},
    TextRow{52, "Creation of temp DEVCONF SIGTRAK files directory failed! "},
    TextRow{53, "Creation of temp VISTREL files directory ! "},
    TextRow{54, "Moving up one level from target directory failed"},
    TextRow{55, "wrong input format"},
    TextRow{56, "Moving up one level in the directory failed (i)"},
    TextRow{57, "Moving up one level in the directory failed (ii)"},
    TextRow{58, "Moving up one level in the directory failed (iii)"},
    TextRow{59, "Moving up one level in the directory failed (iv)"},
    TextRow{60, "Error internal archive structure"},
    TextRow{62, "Writing tar file failed!"},
    TextRow{67, "Error opening file"},
};

constexpr std::array kProgressTexts = {
    TextRow{0, "Preparing structure of target directory..."},
    TextRow{1, "Copying database files to target directory..."},
    TextRow{2, "Copying configuration file to target directory..."},
    TextRow{3, "Copying Vistrel file to target directory..."},
    TextRow{4, "Copying user files to target directory..."},
    TextRow{5, "Preparing structure file..."},
    TextRow{6, "Generating structure file..."},
    TextRow{7, "Creating archive file..."},
    TextRow{8, "Cleaning up temporary files..."},
    TextRow{9, "Generation of zpkc failed!"},
    TextRow{10, "Cleanup of zpkc generation failed"},
    TextRow{11, "Finished successfully"},
};

template <std::size_t Count>
std::string_view textOf(const std::array<TextRow, Count>& rows, int code,
                        std::string_view otherwise) {
    for (const TextRow& row : rows) {
        if (row.code == code) {
            return row.text;
        }
    }
    return otherwise;
}

}  // namespace

std::string_view errorText(int code) {
    return textOf(kErrorTexts, code, "Unhandled error code!");
}

std::string_view progressText(int step) {
    return textOf(kProgressTexts, step, "");
}

std::string filledText(std::string_view text, std::initializer_list<std::string_view> arguments) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '%' && i + 1 < text.size() && text[i + 1] >= '1' && text[i + 1] <= '9') {
            const auto number = static_cast<std::size_t>(text[i + 1] - '1');
            if (number < arguments.size()) {
                result += arguments.begin()[number];
                ++i;
                continue;
            }
        }
        result += text[i];
    }
    return result;
}

}  // namespace quillmark
