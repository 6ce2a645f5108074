// tests/effect/commands_test.cpp — set-up, identity and the commands that need no footage.
#include <gtest/gtest.h>

#include <array>

#include "host/error.h"
#include "hostapi/command_data.h"
#include "tests/effect/test_footage.h"
#include "tests/host/recording_listener.h"

namespace effect_test {
namespace {

using host::ApiVersion;
using host::Role;

TEST(GlobalSetup, ReportsWhatThePropertyListSays) {
  ASSERT_TRUE(effectModule().properties().has_value());
  const host::PropertyList& list = *effectModule().properties();
  EXPECT_EQ(list.name, "Varilum4");
  EXPECT_EQ(list.category, "Tovan");
  EXPECT_EQ(list.matchName, "Tovan Varilum4");
  EXPECT_EQ(list.entryPoint, "EntryPointFunc");
  EXPECT_EQ(list.specMajor, 13);
  EXPECT_EQ(list.specMinor, 14);
  Visit visit;
  EXPECT_EQ(visit.effect().version(), 0x00210001u);
  EXPECT_EQ(visit.effect().outFlags(), 0x06008554u);
  EXPECT_EQ(visit.effect().outFlags2(), 0x01f09401u);
  EXPECT_EQ(list.effectVersion, visit.effect().version());
  EXPECT_EQ(list.outFlags, visit.effect().outFlags());
  EXPECT_EQ(list.outFlags2, visit.effect().outFlags2());
}

TEST(GlobalSetup, TakesTheSupportedVersionsAndRefusesTheRest) {
  for (const ApiVersion good :
       {ApiVersion{13, 9}, ApiVersion{13, 14}, ApiVersion{13, 15}, ApiVersion{13, 28}}) {
    EXPECT_NO_THROW((Visit{Role::afterEffects, good}));
  }
  for (const ApiVersion bad :
       {ApiVersion{13, 8}, ApiVersion{12, 9}, ApiVersion{14, 0}, ApiVersion{14, 9}}) {
    host::Host app{Role::afterEffects, bad};
    RecordingListener listener;
    app.setListener(&listener);
    try {
      const host::Effect effect{app, effectModule()};
      ADD_FAILURE() << bad.major << "." << bad.minor << " was accepted";
    } catch (const host::CommandError& error) {
      EXPECT_EQ(error.result(), -1);
    }
    ASSERT_EQ(listener.shown().size(), 1u);
    EXPECT_EQ(listener.shown()[0].text,
              "Varilum4 plugin requires After Effects or Premiere Pro CC 2015\n"
              "Please use Varilum3 instead");
    EXPECT_EQ(app.outstanding().describe(), "nothing");
  }
}

TEST(GlobalSetup, UnknownHostsAreWelcome) {
  EXPECT_NO_THROW((Visit{Role::other, {1, 0}}));
}

TEST(About, NamesTheEffectAndTheHost) {
  TestFootage footage = flickeringFootage(40, 40, 2, host::Depth::bits8);
  host::HostOptions options;
  options.appVersion = "15.1.2x69";
  Visit visit{Role::afterEffects, {13, 14}, options};
  EXPECT_EQ(visit.effect().about(),
            "Varilum4 v4.2.0 Copyright (c) Tovan. All rights reserved.\rAE v13.14   ");
  // The host's own version is fetched when the first instance is made.
  const host::Instance fx{visit.effect(), footage};
  EXPECT_EQ(visit.effect().about(),
            "Varilum4 v4.2.0 Copyright (c) Tovan. All rights reserved.\rAE v13.14   15.1.2x69");
}

TEST(About, CutsALongVersionTextToSixteenCharacters) {
  TestFootage footage = flickeringFootage(40, 40, 2, host::Depth::bits8);
  host::HostOptions options;
  options.appVersion = "123.456.789x1234567890";
  Visit visit{Role::afterEffects, {13, 14}, options};
  const host::Instance fx{visit.effect(), footage};
  EXPECT_TRUE(visit.effect().about().ends_with("AE v13.14   123.456.789x1234"));
}

TEST(UsageNotes, AreShownOnceAndNeverByARenderEngine) {
  TestFootage footage = flickeringFootage(40, 40, 2, host::Depth::bits8);
  for (const bool renderEngine : {false, true}) {
    host::HostOptions options;
    options.renderEngine = renderEngine;
    Visit visit{Role::afterEffects, {13, 14}, options};
    RecordingListener listener;
    visit.host().setListener(&listener);
    {
      const host::Instance first{visit.effect(), footage};
      const host::Instance second{visit.effect(), footage};
    }
    const auto shown = listener.shown();
    ASSERT_EQ(shown.size(), renderEngine ? 0u : 1u);
    if (!renderEngine) {
      EXPECT_EQ(shown[0].kind, host::MessageKind::box);
      EXPECT_EQ(shown[0].caption, "Varilum4");
      EXPECT_EQ(shown[0].text,
                "Varilum ignores masks and effects applied in the same composition.\n"
                "Do not use on a layer with time-reverse or time-remapping.\n"
                "To analyze RAW faster, create a proxy.");
    }
    visit.host().setListener(nullptr);
  }
}

struct Declared {
  std::int32_t index;
  std::int32_t type;
  const char* name;
  std::int32_t flags;
  std::int32_t uiFlags;
};

// As users and saved projects know them.
constexpr std::array kDeclared{
    Declared{1, PF_Param_GROUP_START, "About and help", 0, 0},
    Declared{2, PF_Param_BUTTON, "", 66, 512},
    Declared{3, PF_Param_BUTTON, "", 66, 512},
    Declared{4, PF_Param_BUTTON, "", 66, 0},
    Declared{5, PF_Param_BUTTON, "", 66, 512},
    Declared{6, PF_Param_GROUP_END, "", 0, 0},
    Declared{7, PF_Param_BUTTON, " ", 66, 0},
    Declared{8, PF_Param_BUTTON, " ", 66, 0},
    Declared{9, PF_Param_GROUP_START, "Analyze options", 0, 0},
    Declared{10, PF_Param_FIX_SLIDER, "Speed (1=accurate, 5=fast)", 66, 0},
    Declared{11, PF_Param_CHECKBOX, "Analyze within sub-rectangle", 98, 0},
    Declared{12, PF_Param_POINT, "1st sub-rectangle corner", 64, 0},
    Declared{13, PF_Param_POINT, "2nd sub-rectangle corner", 64, 0},
    Declared{14, PF_Param_CHECKBOX, "Favor brighter pixels", 66, 0},
    Declared{15, PF_Param_CHECKBOX, "Don't deflicker", 64, 0},
    Declared{16, PF_Param_GROUP_END, "", 0, 0},
    Declared{17, PF_Param_GROUP_START, "Deflicker options", 0, 0},
    Declared{18, PF_Param_POPUP, "Deflicker method", 66, 0},
    Declared{19, PF_Param_POPUP, "Correction method", 66, 0},
    Declared{20, PF_Param_CHECKBOX, "Use gamma correction", 66, 520},
    Declared{21, PF_Param_FIX_SLIDER, "Number of smoothing frames", 96, 0},
    Declared{22, PF_Param_CHECKBOX, "Adjust for clipping", 66, 0},
    Declared{23, PF_Param_FIX_SLIDER, "Adjust for clipping at %", 64, 0},
    Declared{24, PF_Param_GROUP_END, "", 0, 0},
    Declared{25, PF_Param_ARBITRARY_DATA, "Luminance", 0, 2},
    Declared{26, PF_Param_FIX_SLIDER, "Shift spread", 64, 0},
    Declared{27, PF_Param_GROUP_START, "Luminance graph options", 0, 0},
    Declared{28, PF_Param_CHECKBOX, "Zoom luminance scale", 66, 0},
    Declared{29, PF_Param_CHECKBOX, "Show red histogram", 66, 0},
    Declared{30, PF_Param_CHECKBOX, "Show green histogram", 66, 0},
    Declared{31, PF_Param_CHECKBOX, "Show blue histogram", 66, 0},
    Declared{32, PF_Param_GROUP_END, "", 0, 0},
    Declared{33, PF_Param_FLOAT_SLIDER, "Counter", 64, 512},
    Declared{34, PF_Param_CHECKBOX, "Needs Analyze", 64, 512},
};

TEST(ParamsSetup, DeclaresTheParametersInOrder) {
  Visit visit;
  const auto& declared = visit.effect().parameters();
  ASSERT_EQ(declared.size(), 35u);
  for (const Declared& want : kDeclared) {
    const auto& have = declared[static_cast<std::size_t>(want.index)];
    EXPECT_EQ(have.definition.param_type, want.type) << want.index;
    EXPECT_EQ(have.name, want.name) << want.index;
    EXPECT_EQ(have.definition.flags, want.flags) << want.index;
    EXPECT_EQ(have.definition.ui_flags, want.uiFlags) << want.index;
    EXPECT_EQ(have.id, want.index);
  }
  EXPECT_EQ(declared[2].buttonText, "About");
  EXPECT_EQ(declared[4].buttonText, "Help");
  EXPECT_EQ(declared[7].buttonText, "Analyze");
  EXPECT_EQ(declared[8].buttonText, "Clear");
  EXPECT_EQ(declared[18].choices, (std::vector<std::string>{"Keyframes", "Smoothing"}));
  EXPECT_EQ(declared[19].choices, (std::vector<std::string>{"Linear", "Shift", "Gamma"}));
  EXPECT_EQ(declared[25].definition.ui_width, 400);
  EXPECT_EQ(declared[25].definition.ui_height, 332);
}

TEST(ParamsSetup, OtherHostsShowTheAboutButton) {
  Visit visit{Role::other, {1, 0}};
  EXPECT_EQ(visit.effect().parameters()[2].definition.ui_flags, 0);
}

TEST(Luminance, IsReadAndPrintedAsText) {
  TestFootage footage = flickeringFootage(40, 40, 5, host::Depth::bits8);
  Visit visit;
  host::Instance fx{visit.effect(), footage};
  auto luminance = fx.param("Luminance");
  EXPECT_EQ(luminance.text(), "128.00");
  luminance.setText(" 42.5 ");
  EXPECT_EQ(luminance.text(), "42.50 ");
  luminance.setText("3.14159");
  EXPECT_EQ(luminance.text(), "3.14  ");
  EXPECT_THROW(luminance.setText("bright"), host::Error);
  EXPECT_THROW(luminance.setText(""), host::Error);
  EXPECT_EQ(luminance.text(), "3.14  ");
  luminance.setTextAt(0, "100");
  luminance.setTextAt(4, "140");
  EXPECT_EQ(luminance.text(1), "110.00");
  EXPECT_EQ(luminance.text(3), "130.00");
}

TEST(Entry, AnswersCommandsItDoesNotKnowWithSuccess) {
  for (const std::int32_t command : {2, 9, 10, 12, 16, 17, 19, 20, 21, 25, 26, 27, 29, 1000, -1}) {
    PF_InData in{};
    PF_OutData out{};
    out.out_flags = 0x55;
    EXPECT_EQ(effectModule().entry()(command, &in, &out, nullptr, nullptr, nullptr), 0) << command;
    EXPECT_EQ(out.out_flags, 0) << command;
  }
}

}  // namespace
}  // namespace effect_test
