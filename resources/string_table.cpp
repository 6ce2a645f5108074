// resources/string_table.cpp — all texts that users see, by number.
#include "resources/string_table.h"

namespace varilum {
namespace {

struct TextRecord {
  std::uint32_t id;
  char text[256];
};

// Looked up by position. Numbers without a text are kept free, so that the others stay put.
constexpr TextRecord kTexts[] = {
    {0, ""},
    {1, "Varilum4"},
    {2, "Copyright (c) Tovan. All rights reserved."},
    {3, "Luminance"},
    {4, "Shift spread"},
    {5, "Deflicker options"},
    {6, "Correction method"},
    {7, "Linear|Shift|Gamma"},
    {8, "Deflicker method"},
    {9, "Keyframes|Smoothing"},
    {10, "Use gamma correction"},
    {11, "Favor brighter pixels"},
    {12, ""},
    {13, "Number of smoothing frames"},
    {14, "Don't deflicker"},
    {15, "Luminance graph options"},
    {16, "Show red histogram"},
    {17, "Show green histogram"},
    {18, "Show blue histogram"},
    {19, "Show input histogram"},
    {20, "Show output histogram"},
    {21, "Unused graph options"},
    {22, "Zoom luminance scale"},
    {23, "Adjust for clipping"},
    {24, "Adjust for clipping at %"},
    {25, "Analyze within sub-rectangle"},
    {26, "1st sub-rectangle corner"},
    {27, "2nd sub-rectangle corner"},
    {28, "Histogram overlay"},
    {29, "Draw histogram"},
    {30, "Overlay on the output"},
    {31, "Histogram location"},
    {32, "Histogram width"},
    {33, "Input = %-6.2f"},
    {34, "Desired = %-6.2f"},
    {35, "Output = %-6.2f"},
    {36, "Input = %-6.2f, spread = %-6.2f"},
    {37, "Desired = %-6.2f, spread = %-6.2f"},
    {38, "Output = %-6.2f, spread = %-6.2f"},
    {39, "%d%% analyzed"},
    {40, "Analysis rectangle is empty!"},
    {41, "%-6.2f%% red clipped"},
    {42, "%-6.2f%% green clipped"},
    {43, "%-6.2f%% blue clipped"},
    {44, "Luminance Graph"},
    {45, "Time in Frames"},
    {46, "Input variance %-6.2f"},
    {47, "Output variance %-6.2f"},
    {48, "Histogram not available, please analyze, hist=%d, frame=%d"},
    {49, "Histogram not available, please analyze"},
    {50, "Histogram Graph"},
    {51, "Histogram Graph"},
    {52, "Don't deflicker this frame"},
    {53, "Calculating histogram..."},
    {54, "Analyze"},
    {55, "Cancel"},
    {56, "Clear"},
    {57, "Analyzing, please wait..."},
    {58, "Analyze required"},
    {59, "%d of %d frames analyzed"},
    {60, "Time remaining %d seconds"},
    {61, "Analyzed"},
    {62, "Speed (1=accurate, 5=fast)"},
    {63, "Analysis canceled"},
    {64, "OK"},
    {65, "Cancel"},
    {66, "Luminance: %3.2f "},
    {67, "%s analyzing..."},
    {68, ""},
    {69, ""},
    {70, "About"},
    {71, ""},
    {72, ""},
    {73, ""},
    {74, ""},
    {75, "Help"},
    {76, ""},
    {77, ""},
    {78, "Varilum effect invoked without sequence data"},
    {79, "Analyze options"},
    {80,
     "Varilum ignores masks and effects applied in the same composition.\nDo not use on a layer "
     "with time-reverse or time-remapping.\nTo analyze RAW faster, create a proxy."},
    {81, "Analysis completed"},
    {82, ""},
    {83, ""},
    {84, ""},
    {85, ""},
    {86, ""},
    {87, ""},
    {88, ""},
    {89, ""},
    {90, ""},
    {91,
     "Varilum4 plugin requires After Effects or Premiere Pro CC 2015\nPlease use Varilum3 instead"},
    {92,
     "Varilum4 plugin requires Premiere Pro or After Effects CC 2015\nPlease use Varilum3 instead"},
    {93, "Not enough memory to analyze this layer.\nPlease apply to a shorter duration layer."},
    {94, ""},
    {95, ""},
    {96, ""},
};

consteval bool everyRecordStandsAtItsNumber() {
  std::uint32_t position = 0;
  for (const TextRecord& record : kTexts) {
    if (record.id != position++) return false;
  }
  return position == kTextCount;
}
static_assert(everyRecordStandsAtItsNumber());

}  // namespace

const char* lookupString(std::uint32_t id) noexcept {
  return kTexts[id < kTextCount ? id : 0].text;
}

}  // namespace varilum
