// validate/checks/declaration_checks.cpp — what PARAMS_SETUP declared.
#include <map>

#include "host/effect_state.h"
#include "validate/checks/checks.h"
#include "validate/stage.h"

namespace validate {
namespace {

constexpr std::int32_t kLastId = 9999;

struct Declared {
  Journal& journal;
  const host::ParameterDeclaration& parameter;
  std::string label;

  const PF_ParamDef& definition() const { return parameter.definition; }
  void violate(const char* rule, const std::string& what) const {
    journal.violate(rule, label + ": " + what);
  }
};

template <typename Slider>
void checkRange(const Declared& declared, const Slider& slider) {
  const auto outside = [&](auto value) {
    return value < slider.valid_min || value > slider.valid_max;
  };
  if (slider.valid_max < slider.valid_min) {
    declared.violate("param-range", "the valid range ends before it begins");
  } else if (outside(slider.dephault)) {
    declared.violate("param-range", "the default is outside the valid range");
  } else if (outside(slider.slider_min) || outside(slider.slider_max)) {
    declared.violate("param-range", "the slider goes beyond the valid range");
  }
}

void checkPopup(const Declared& declared) {
  const PF_PopupDef& popup = declared.definition().u.pd;
  const std::size_t texts = declared.parameter.choices.size();
  if (texts != static_cast<std::size_t>(popup.num_choices)) {
    declared.violate("param-popup", std::to_string(popup.num_choices) + " choices, and " +
                                        std::to_string(texts) + " texts");
  }
  if (popup.dephault < 1 || popup.dephault > popup.num_choices) {
    declared.violate("param-popup", "the default is choice " + std::to_string(popup.dephault) +
                                        " of " + std::to_string(popup.num_choices));
  }
}

void checkArbitrary(const Declared& declared) {
  constexpr std::int32_t kShown = PF_PUI_TOPIC | PF_PUI_CONTROL | PF_PUI_NO_ECW_UI;
  if (declared.definition().u.arb_d.dephault == nullptr) {
    declared.violate("param-arbitrary", "no default handle");
  }
  if ((declared.definition().ui_flags & kShown) == 0) {
    declared.violate("param-arbitrary", "none of the flags TOPIC, CONTROL and NO_ECW_UI");
  }
}

void checkKind(const Declared& declared) {
  const PF_ParamDefUnion& u = declared.definition().u;
  switch (declared.definition().param_type) {
    case PF_Param_SLIDER:
      return checkRange(declared, u.sd);
    case PF_Param_FIX_SLIDER:
      return checkRange(declared, u.fd);
    case PF_Param_FLOAT_SLIDER:
      return checkRange(declared, u.fs_d);
    case PF_Param_POPUP:
      return checkPopup(declared);
    case PF_Param_ARBITRARY_DATA:
      return checkArbitrary(declared);
    case PF_Param_BUTTON:
      if ((declared.definition().flags & PF_ParamFlag_SUPERVISE) == 0) {
        declared.violate("param-button", "not supervised");
      }
      return;
    case PF_Param_LAYER:
    case PF_Param_ANGLE:
    case PF_Param_CHECKBOX:
    case PF_Param_COLOR:
    case PF_Param_POINT:
    case PF_Param_POINT_3D:
    case PF_Param_NO_DATA:
    case PF_Param_PATH:
    case PF_Param_GROUP_START:
    case PF_Param_GROUP_END:
      return;
    default:
      declared.violate("param-kind",
                       "its kind is " + std::to_string(declared.definition().param_type));
  }
}

void checkGroups(Trial& trial, const std::vector<host::ParameterDeclaration>& all) {
  int open = 0;
  for (const host::ParameterDeclaration& parameter : all) {
    if (parameter.definition.param_type == PF_Param_GROUP_START) ++open;
    if (parameter.definition.param_type == PF_Param_GROUP_END && --open < 0) {
      trial.journal.violate("param-group", "a group ends that was not begun");
      open = 0;
    }
  }
  if (open > 0) {
    trial.journal.violate("param-group", std::to_string(open) + " groups are not ended");
  }
}

void checkIds(Trial& trial, const std::vector<host::ParameterDeclaration>& all) {
  std::map<std::int32_t, std::size_t> seen;
  for (std::size_t i = 1; i < all.size(); ++i) {
    const std::int32_t id = all[i].id;
    const std::string label = "\"" + all[i].name + "\" (" + std::to_string(i) + ")";
    if (id < 1 || id > kLastId) {
      trial.journal.violate("param-id", label + ": its id is " + std::to_string(id));
    }
    if (const auto [other, fresh] = seen.emplace(id, i); !fresh) {
      trial.journal.violate("param-id",
                            label + ": has the id of parameter " + std::to_string(other->second));
    }
  }
}

void declarations(Trial& trial) {
  Stage stage(trial);
  stage.setUp();
  trial.journal.step("read the declarations");
  const std::vector<host::ParameterDeclaration>& all = stage.effect().parameters();
  checkIds(trial, all);
  checkGroups(trial, all);
  bool controls = false;
  for (std::size_t i = 1; i < all.size(); ++i) {
    checkKind({trial.journal, all[i], "\"" + all[i].name + "\" (" + std::to_string(i) + ")"});
    controls = controls || (all[i].definition.ui_flags & PF_PUI_CONTROL) != 0;
  }
  const host::EffectState& effect = stage.effect().state();
  const bool flagged = (effect.outFlags & PF_OutFlag_CUSTOM_UI) != 0;
  if (flagged != (effect.eventMask != 0)) {
    trial.journal.violate("custom-ui", flagged
                                           ? "CUSTOM_UI is set, and register_ui was not called"
                                           : "register_ui was called, and CUSTOM_UI is not set");
  }
  if (controls && !flagged) {
    trial.journal.violate("custom-ui", "a parameter has a control of its own without CUSTOM_UI");
  }
  stage.close();
}

}  // namespace

const Check kDeclarations{
    "declarations",
    "Parameters are as many as announced, told apart by their ids, and whole in themselves.",
    declarations};

}  // namespace validate
