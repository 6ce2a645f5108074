// host/parameter_declaration.cpp — keeping what an effect declares.
#include "host/parameter_declaration.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace host {
namespace {

constexpr std::int32_t kFreeUiFlags = PF_PUI_ECW_SEPARATOR | PF_PUI_DISABLED | PF_PUI_INVISIBLE;

std::string boundedText(const char (&text)[32]) {
  return {text, static_cast<std::size_t>(std::find(text, text + 31, '\0') - text)};
}

std::vector<std::string> splitChoices(std::string_view text) {
  std::vector<std::string> choices;
  for (std::size_t start = 0;;) {
    const std::size_t bar = text.find('|', start);
    choices.emplace_back(text.substr(start, bar - start));
    if (bar == std::string_view::npos) return choices;
    start = bar + 1;
  }
}

void setName(PF_ParamDef& record, const std::string& name) {
  std::memset(record.name, 0, sizeof record.name);
  std::memcpy(record.name, name.data(), name.size());
}

}  // namespace

ParameterDeclaration declare(const PF_ParamDef& definition, std::int32_t index) {
  ParameterDeclaration declaration;
  declaration.definition = definition;
  declaration.name = boundedText(definition.name);
  declaration.id = definition.uu.id != 0 ? definition.uu.id : index;
  PF_ParamDefUnion& u = declaration.definition.u;
  switch (definition.param_type) {
    case PF_Param_POPUP:
      if (u.pd.u.namesptr != nullptr) declaration.choices = splitChoices(u.pd.u.namesptr);
      u.pd.u.namesptr = nullptr;
      break;
    case PF_Param_BUTTON:
      if (u.button_d.u.namesptr != nullptr) declaration.buttonText = u.button_d.u.namesptr;
      u.button_d.u.namesptr = nullptr;
      break;
    case PF_Param_CHECKBOX:
      u.bd.u.nameptr = nullptr;
      break;
    default:
      break;
  }
  setName(declaration.definition, declaration.name);
  declaration.definition.uu.change_flags = PF_ChangeFlag_NONE;
  return declaration;
}

ParameterDeclaration declareLayer() {
  ParameterDeclaration declaration;
  declaration.definition.param_type = PF_Param_LAYER;
  declaration.name = "Layer";
  setName(declaration.definition, declaration.name);
  return declaration;
}

bool redefine(PF_ParamDef& current, const PF_ParamDef& wanted) {
  PF_ParamDef next = current;
  setName(next, boundedText(wanted.name));
  next.ui_flags = (current.ui_flags & ~kFreeUiFlags) | (wanted.ui_flags & kFreeUiFlags);
  next.ui_width = wanted.ui_width;
  next.ui_height = wanted.ui_height;
  next.flags = (current.flags & ~PF_ParamFlag_COLLAPSE_TWIRLY) |
               (wanted.flags & PF_ParamFlag_COLLAPSE_TWIRLY);
  if (current.param_type == PF_Param_SLIDER) {
    next.u.sd.slider_min = wanted.u.sd.slider_min;
    next.u.sd.slider_max = wanted.u.sd.slider_max;
  } else if (current.param_type == PF_Param_FIX_SLIDER) {
    next.u.fd.slider_min = wanted.u.fd.slider_min;
    next.u.fd.slider_max = wanted.u.fd.slider_max;
    next.u.fd.precision = wanted.u.fd.precision;
    next.u.fd.display_flags = wanted.u.fd.display_flags;
  } else if (current.param_type == PF_Param_FLOAT_SLIDER) {
    next.u.fs_d.slider_min = wanted.u.fs_d.slider_min;
    next.u.fs_d.slider_max = wanted.u.fs_d.slider_max;
    next.u.fs_d.precision = wanted.u.fs_d.precision;
    next.u.fs_d.display_flags = wanted.u.fs_d.display_flags;
  }
  const bool changed = std::memcmp(&next, &current, sizeof next) != 0;
  current = next;
  return changed;
}

}  // namespace host
