#include <tools/Identifiers.h>

namespace Tools {

// No switch has a default, so that the compiler complains about a kind without an identifier.

const char* identifierOf(Host::LossKind kind)
{
    using enum Host::LossKind;
    switch (kind) {
    case GluedWord: return "gluedWord";
    case ObjectReference: return "objectReference";
    case EarlyValue: return "earlyValue";
    case RepeatedKey: return "repeatedKey";
    case OtherValue: return "otherValue";
    case StreamData: return "streamData";
    case Unwritable: return "unwritable";
    case SecondSubsection: return "secondSubsection";
    case EarlierRevision: return "earlierRevision";
    case ObjectStream: return "objectStream";
    case LostReference: return "lostReference";
    case Encryption: return "encryption";
    case Comment: return "comment";
    }
    return "unknown";
}

const char* identifierOf(Host::FieldKind kind)
{
    using enum Host::FieldKind;
    switch (kind) {
    case Text: return "text";
    case CheckBox: return "checkBox";
    case RadioButtons: return "radioButtons";
    case PushButton: return "pushButton";
    case ListBox: return "listBox";
    case ComboBox: return "comboBox";
    case Signature: return "signature";
    case Unknown: break;
    }
    return "unknown";
}

} // namespace Tools
