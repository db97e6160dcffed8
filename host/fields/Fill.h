#pragma once

#include <document/Document.h>
#include <host/base/Result.h>
#include <host/fields/FieldValue.h>
#include <host/fonts/TextEngine.h>

#include <functional>
#include <memory>
#include <optional>

namespace Host {

namespace PDF = Libraries::Files::PDF;

// Who draws the new values.
enum class Appearances {
    Drawn,          // the filled fields get looks of their own
    DrawnByViewers, // `NeedAppearances` is set in the form, so that viewers draw all fields anew
    LeftAsTheyAre,  // viewers may go on showing the old ones
};

// How values are set.
struct FillOptions {
    Appearances appearances = Appearances::Drawn;
    // Gives what draws texts with characters that neither the font of the field nor a standard one has, such as
    // `Text::loadEngine` (text/Loader.h), or the reason why it can't be had. A filler asks at the first such text, and
    // keeps to what it got. None when empty.
    std::function<Result<std::shared_ptr<TextEngine>>()> engine;
    // Leaves out characters that can't be drawn, with a warning, where the value would be refused.
    bool isAnyTextAllowed = false;
    // Leaves the fonts of texts that the engine draws to `FormFiller::finish`, for many texts: else each text with new
    // characters makes a new subset. Before that the fonts in the document are of no use.
    bool areFontsLater = false;
    // Leaves a form in XFA where it is, beside the fields. It keeps the old values, and viewers that know it show them.
    bool isXfaKept = false;
    // Warns of required fields that are still empty after the last filling: texts and choices without a value, and
    // check boxes and radio buttons that are off.
    bool areRequiredChecked = false;
    // Raises the limits of what one filling may take (`Limits::texts` and those after it).
    std::uint64_t limitFactor = 1;
};

// Sets values of the form of one document. It looks for the fields once, when it is created, so that filling
// all fields costs no more than one walk and the fields themselves; kids that are added later aren't
// seen. It keeps the document, and belongs to the document's thread.
class EXPORTED FormFiller {
public:
    // Refused by the rules of `listFields`.
    static Result<FormFiller> create(const Ref<PDF::Document>& document, std::uint64_t limitFactor = 1) noexcept;
    FormFiller(FormFiller&& other) noexcept;
    FormFiller& operator=(FormFiller&& other) noexcept;
    ~FormFiller() noexcept;

    // Whether there is a field at `path` and it takes a value, as all do but push buttons, signatures and those
    // without a kind.
    bool takesValue(const std::string& path) const noexcept;
    // Sets the value of the field at `path`, as `listFields` gives it; of all of them when fields of several
    // kinds have it.
    // No refusal when it is done. Otherwise nothing is changed: with `Reason::Missing` for an unknown path, else
    // with `WrongArgument`, for a value of a kind that the field doesn't take, a state or a choice that it doesn't
    // have, more choices than it takes, a text that is not UTF-8 or has more than `MaxLen` UTF-16 units (0 is no
    // limit, below 0 no text fits, and a comb has that many cells), a push button, a signature, or a field without a
    // kind; with `LimitReached` where the options, states or widgets of the field are too many. Read-only fields are
    // filled.
    //
    // What changes: `V` of the field, of its nameless kids that carry one, too, and of other fields of the same
    // path. A text field also loses its `RV`, which holds the old text with its formatting. `AS` of each
    // widget of a button: the state where it has that one, else "Off". `I` of a choice, where there is one or the
    // field takes several choices; each of them is kept once, in the order of the options. `TI` of a list
    // box, where there is one, so that it shows the first choice.
    //
    // `AP` of each widget with a rectangle, when the values are drawn: a text in the font, size and color of `DA`,
    // aligned by `Q`, as one line, several, a comb or asterisks; the choices of a list box, from `TI` on; background
    // and border of `MK` and `BS`. Size 0 is the one that fits. A font that can't be used is replaced by a standard
    // one, with a warning, as are a size and a rotation that can't be. Buttons keep the looks that they have; one
    // without gets some, and "Yes" as its state, or one of "0", "1" and so on for several widgets. Refused with
    // `Unsupported`: characters that no font has, each by name.
    //
    // `XFA` of the form goes, since viewers that know it would show the old values, unless the options keep it.
    //
    // `NeedAppearances` stays as it is when values are drawn, but where it is true and the engine drew something:
    // viewers that draw all fields anew may lack these characters. It becomes false then, with a warning that names
    // the other fields whose values no look shows.
    std::optional<Refusal> fill(
        const std::string& path, const FieldValue& value, const FillOptions& options = {}) noexcept;

    // Embeds the fonts that were left for later; nothing is left to be done without any. Refused as by the engine, or
    // with the code of a stream that can't be made; then the document is of no use.
    std::optional<Refusal> finish() noexcept;

    // What people should know before the filled form goes out: that a signature or usage rights end with the save,
    // that the form in XFA was taken out or keeps the old values, that scripts of the form didn't run, or that
    // something isn't drawn as it is, such as line breaks in a field of one line. One line each.
    const std::vector<std::string>& warnings() const noexcept;

private:
    struct State;
    explicit FormFiller(std::unique_ptr<State> state) noexcept;

    std::unique_ptr<State> _state;
};

// The same for one field. Gives the warnings; usually there are none.
EXPORTED Result<std::vector<std::string>> fill(const Ref<PDF::Document>& document, const std::string& path,
    const FieldValue& value, const FillOptions& options = {}) noexcept;

} // namespace Host
