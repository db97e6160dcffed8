#pragma once

#include <document/Document.h>
#include <host/base/Result.h>
#include <host/fields/FieldValue.h>

#include <memory>
#include <optional>

namespace Host {

namespace PDF = Libraries::Files::PDF;

// Who draws the new values.
enum class Appearances {
    DrawnByViewers, // `NeedAppearances` is set in the form, so that viewers draw the new values
    LeftAsTheyAre,  // viewers may go on showing the old ones
};

// Sets values of the form of one document. It looks for the fields once, when it is made, so that a fill of
// all fields costs no more than one walk and the fields themselves; kids that are added later aren't
// seen. It keeps the document, and belongs to the document's thread.
class EXPORTED FormFiller {
public:
    // Refused by the rules of `listFields`.
    static Result<FormFiller> create(const Ref<PDF::Document>& document) noexcept;
    FormFiller(FormFiller&& other) noexcept;
    FormFiller& operator=(FormFiller&& other) noexcept;
    ~FormFiller() noexcept;

    // Sets the value of the field at `path`, as `listFields` gives it; of all of them when fields of several
    // kinds have it.
    // None when it is done, else the reason, and nothing is changed: an unknown path, a value of a kind that
    // the field doesn't take, a state or a choice that it doesn't have, more choices than it takes, a text of
    // more than `MaxLen` UTF-16 units (0 is no limit, below 0 no text passes) or that is no UTF-8, a push
    // button, a signature, a field without a kind. Read-only fields are filled.
    //
    // What changes: `V` of the field, of its nameless kids that carry one, too, and of other fields of the same
    // path. With that of a text its `RV`, which holds the old text with its formatting, goes. `AS` of each
    // widget of a button: the state where it has that, else "Off". `I` of a choice, where there is one or the
    // field takes several choices; of several each is kept once, in the order of the options. `TI` of a list
    // box, where there is one, so that it shows the first choice.
    std::optional<Refusal> fill(const std::string& path, const FieldValue& value,
        Appearances appearances = Appearances::DrawnByViewers) noexcept;

    // What a filled form should not go out without people knowing: a signature that will not hold, or another
    // form beside this one, which keeps the old values. In words, one line each.
    const std::vector<std::string>& warnings() const noexcept;

private:
    struct State;
    explicit FormFiller(std::unique_ptr<State> state) noexcept;

    std::unique_ptr<State> _state;
};

// The same for one field. Gives the warnings, of which there are mostly none.
EXPORTED Result<std::vector<std::string>> fill(const Ref<PDF::Document>& document, const std::string& path,
    const FieldValue& value, Appearances appearances = Appearances::DrawnByViewers) noexcept;

} // namespace Host
