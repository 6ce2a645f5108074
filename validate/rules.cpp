// validate/rules.cpp — the rules of the interface that an effect can break.
#include "validate/rules.h"

#include <stdexcept>
#include <string>

namespace validate {
namespace {

constexpr auto kNote = Severity::note;
constexpr auto kWarning = Severity::warning;
constexpr auto kError = Severity::error;

constexpr Rule kRules[] = {
    // The process
    {"crashed", kError, "The application goes down with it, and the user's work.",
     "Run the check alone (--only) under a debugger; the step it was in is named."},
    {"hung", kError, "The application freezes: it waits for the effect in its user interface.",
     "Look for a loop without an end or a lock that is never given back; slow effects get more "
     "time with --silence."},
    {"exited", kError, "A library must not end the process of the application that loaded it.",
     "Return an error from the command instead of ending the process."},
    {"exception-escaped", kError, "Exceptions do not cross the entry point: the application falls.",
     "Catch everything in the entry point and return an error."},
    // Loading
    {"load-failed", kError, "The application passes the library over.",
     "Check that it is a library for this system, that what it links is there, and that it exports "
     "its entry point."},
    {"refused", kError, "The effect is not offered to the user at all.",
     "Return 0 from GLOBAL_SETUP and PARAMS_SETUP in every application the effect is meant for."},
    {"no-property-list", kNote, "Applications find effects by their property list.",
     "On Windows add the PIPL resource; elsewhere put libname.pipl beside the library."},
    {"property-list", kError, "The list names the effect in menus and in projects.",
     "Give it a name and a match name of 1 to 31 characters and a category."},
    {"property-mismatch", kError, "Applications compare the two, warn the user and trust the list.",
     "Make the property list's flags and version the same as those of GLOBAL_SETUP."},
    // Declarations
    {"param-count", kError, "The application indexes its arrays by the number it is told.",
     "Set num_params to the parameters added plus one for the layer."},
    {"param-id", kError, "Projects are matched by the ids: values would go to other parameters.",
     "Give each parameter an id of its own from 1 to 9999, or none of them any."},
    {"param-range", kError, "A default outside its range is clamped, or the slider jumps.",
     "Put the default and the slider's range within the valid range."},
    {"param-popup", kError, "A choice without a text cannot be shown or chosen.",
     "Let the number of choices be that of the texts between the bars, and the default one of "
     "them, counted from 1."},
    {"param-button", kError, "Nobody would ever learn that the button was pressed.",
     "Set PF_ParamFlag_SUPERVISE on buttons."},
    {"param-arbitrary", kError, "The application cannot make a first value, or show the parameter.",
     "Give a default handle and one of the flags TOPIC, CONTROL or NO_ECW_UI."},
    {"param-group", kError, "The controls end up in another group, or in none.",
     "Close each group that was begun, and none that was not."},
    {"param-kind", kError, "The application does not know how to show or save it.",
     "Declare parameters of the kinds that the interface has."},
    {"custom-ui", kError, "No event will come, or events come that the effect does not expect.",
     "Set CUSTOM_UI and call register_ui together."},
    // Commands
    {"command-failed", kError, "The user sees an error where everything was in order.",
     "Return 0 when a command was done; unknown commands count as done, too."},
    {"silent-error", kWarning, "The user sees that something failed, and not what.",
     "Write a sentence into return_msg, and set DISPLAY_ERROR_MESSAGE, for errors of your own."},
    {"bad-message", kError, "The application reads on behind the text.",
     "Keep return_msg within its 256 bytes, the last one zero."},
    {"sequence-replaced", kError, "The handle is dropped there, with all that hangs on it.",
     "Change the handle only in the SEQUENCE and FRAME commands, RENDER and DO_DIALOG; elsewhere "
     "write into it."},
    {"values-ignored", kWarning, "Changed values are dropped: the effect believes in others.",
     "Change values in USER_CHANGED_PARAM and in clicks, drags and keys that are marked handled."},
    {"dynamic-flags", kError, "Applications cache by flags known at start; new ones go unnoticed.",
     "Report at GLOBAL_SETUP every flag that may be on later."},
    {"interface", kError, "The call was not one the interface allows there.",
     "See what was reported, and the documentation of that call."},
    {"wrong-thread", kError, "Applications answer only the thread that they called on.",
     "Make callbacks on the thread of the command; hand results over to it."},
    {"unserved", kNote, "The validator's host does not have it, so what follows may be its fault.",
     "Judge findings of the same check with this in mind."},
    // What is taken is given back
    {"leaked-handle", kError, "Memory is lost with each instance or frame.",
     "Dispose of each handle: sequence data in SEQUENCE_SETDOWN, global data in GLOBAL_SETDOWN."},
    {"dead-handle", kError, "Memory that belongs to somebody else is read or written.",
     "Forget a handle once it was disposed of or handed over."},
    {"unbalanced-locks", kError, "A locked handle can never be moved or freed.",
     "Unlock as often as you lock, on errors, too."},
    {"locked-after-failure", kNote, "It is disposed of next; only its last owner sees the lock.",
     "Unlock what a failed command hands back, too."},
    {"leaked-checkout", kError, "The application keeps the frame or value for ever.",
     "Call checkin_param for every checkout_param, on errors, too."},
    {"dead-checkout", kError, "The record was given back already, or never came from the host.",
     "Check in each record once."},
    {"leaked-suite", kError, "The application cannot unload the suite.",
     "Release each suite that was acquired, on errors, too."},
    {"dead-suite", kError, "Its functions may be gone.",
     "Use a suite between acquiring and releasing it."},
    {"leaked-world", kError, "An image is lost with each frame.",
     "Dispose of each world that was made."},
    {"leaked-drawing", kError, "Drawing objects pile up with each drawing.",
     "Release pens, brushes, paths and fonts before the event ends."},
    {"leaked-reference", kError, "The application keeps frames and options for ever.",
     "Give back receipts, render options, effect references, dialogs and pre-render data."},
    {"global-data", kError, "Nobody else frees it.", "Dispose of global data in GLOBAL_SETDOWN."},
    // Pixels
    {"wrote-outside", kError, "Other frames or the application's own memory are overwritten.",
     "Address rows by rowbytes, and write width by height pixels."},
    {"wrote-input", kError, "The frame is shared: other effects and the cache show the damage.",
     "Treat input worlds as read only."},
    {"unwritten-output", kError, "The buffer comes full of rubbish, which the user then sees.",
     "Write every pixel of the output, with the input's where nothing changes."},
    {"result-rect", kError, "Pixels go missing or are allocated in vain.",
     "Keep result_rect within the request and max_result_rect, or set RETURNS_EXTRA_PIXELS."},
    {"output-size", kError,
     "The application makes a buffer of another size than the effect thinks.",
     "Set I_EXPAND_BUFFER or I_SHRINK_BUFFER if FRAME_SETUP changes the size."},
    {"not-repeatable", kError, "Frames are cached: what is shown depends on when it was made.",
     "Let a frame depend on its time, the parameters and the sequence data alone; seed random "
     "numbers with the frame."},
    {"instances-mixed", kError, "One layer's settings show up on another.",
     "Keep what belongs to an instance in its sequence data, not in globals."},
    {"threads-differ", kError, "Frames depend on what else is being rendered.",
     "Share nothing that changes between instances, or drop the flag that claims thread safety."},
    {"differs-under-stress", kError, "A real application that does this gets other pictures.",
     "See which stress it was: the check's sentence names it."},
    // Saving
    {"saved-differs", kError, "A project looks different after it was opened again.",
     "Flatten everything that rendering needs."},
    {"arbitrary-copy", kError, "The parameter loses its value.",
     "Give a new handle from NEW, COPY and INTERP; with no source, a default."},
    {"arbitrary-compare", kError, "The application takes unchanged values for changed.",
     "Answer EQUAL for a value and its copy."},
    {"arbitrary-flatten", kError, "The value is lost when the project is saved.",
     "Write exactly as many bytes as FLAT_SIZE said, and read them back in UNFLATTEN."},
    {"arbitrary-text", kWarning, "Copying keyframes as text loses them.",
     "Print within the size announced, and scan what was printed."},
    // Panel
    {"context-changed", kError, "The application finds its panel by what stands there.",
     "Write only into plugin_state of the event's context."},
    {"drew-unasked", kError, "The drawing lands in another window.",
     "Draw only in DRAW, and not when told not to."},
    // Refusals
    {"after-refusal", kError, "One shortage spoils the instance for good.",
     "Leave everything as it was when a call is refused."},
    {"other-application", kWarning, "The effect fails in one of the applications.",
     "Support it, or refuse in GLOBAL_SETUP with a message."},
};

// Parts of the host's sentences. The first that fits counts.
struct Phrase {
  const char* part;
  const char* rule;
};
constexpr Phrase kPhrases[] = {
    {"this host does not serve it", "unserved"},
    {"an exception", "exception-escaped"},
    {"failed and gave back locked", "locked-after-failure"},
    {"left the locks of", "unbalanced-locks"},
    {"locked sequence data", "unbalanced-locks"},
    {"the flattened data is locked", "unbalanced-locks"},
    {"the pre-render data is still locked", "unbalanced-locks"},
    {"the handle was not locked", "unbalanced-locks"},
    {"may not replace the sequence data", "sequence-replaced"},
    {"did not check in", "leaked-checkout"},
    {"checkin_", "dead-checkout"},
    {"drawing objects", "leaked-drawing"},
    {"render references", "leaked-reference"},
    {"a suite was released that is not held", "dead-suite"},
    {"a function of a released suite", "dead-suite"},
    {"did not release", "leaked-suite"},
    {"a return message has no end", "bad-message"},
    {"on a thread that the host did not call on", "wrong-thread"},
    {"the property list gives", "property-mismatch"},
    {"the effect declared", "param-count"},
    {"GLOBAL_SETDOWN left the global data", "global-data"},
    {"SETDOWN gave", "command-failed"},
    {"could not be taken down", "command-failed"},
    {"changed the host's part of the context", "context-changed"},
    {"DRAW drew", "drew-unasked"},
    {"PF_GetDrawingReference", "drew-unasked"},
    {"may not change values", "values-ignored"},
    {"is not marked as handled", "values-ignored"},
    {"an arbitrary value is marked changed", "arbitrary-copy"},
    {"could not make an arbitrary value", "arbitrary-copy"},
    {"dispose_world", "leaked-world"},
    {"no live handle", "dead-handle"},
    {"no handle", "dead-handle"},
    {"wrote into a layer", "wrote-input"},
    {"wrote outside", "wrote-outside"},
    {"SMART_PRE_RENDER: the result", "result-rect"},
    {"FRAME_SETUP", "output-size"},
};

}  // namespace

std::span<const Rule> allRules() noexcept {
  return kRules;
}

const Rule& ruleOf(std::string_view id) {
  for (const Rule& rule : kRules) {
    if (id == rule.id) return rule;
  }
  throw std::logic_error("no rule is called " + std::string(id));
}

const char* nameOf(Severity severity) noexcept {
  switch (severity) {
    case Severity::note:
      return "note";
    case Severity::warning:
      return "warning";
    case Severity::error:
      break;
  }
  return "error";
}

const Rule& ruleOfReport(std::string_view report) noexcept {
  for (const Phrase& phrase : kPhrases) {
    if (report.find(phrase.part) != std::string_view::npos) return ruleOf(phrase.rule);
  }
  return ruleOf("interface");
}

}  // namespace validate
