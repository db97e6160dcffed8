#pragma once

#include <document/Document.h>
#include <forms/Field.h>

#include <vector>

namespace Libraries::Files::PDF {

class FieldBuild;

// A field of kind `Generic`, and the base of all others.
class FieldObj : public ::Object, public virtual Field {
public:
    FieldObj(FieldBuild& build, Type type, Ref<Dictionary> dictionary, const Ref<Field>& parent) noexcept;
    ~FieldObj() noexcept override;

    // Field
    Type type() const noexcept override { return _type; }
    Flags flags() const noexcept override { return _flags; }
    Ref<Field> parent() const noexcept override { return _parent.lock(); }
    std::uint64_t childCount() const noexcept override { return _children.size(); }
    Ref<Field> child(std::uint64_t index) const noexcept override;
    Ref<String> name() const noexcept override;
    Ref<String> alternateName() const noexcept override;
    Ref<String> mappingName() const noexcept override;
    bool setAppearance(Ref<Value> value) noexcept override;
    Ref<Value> appearance() const noexcept override;
    Ref<Dictionary> defaultResources() const noexcept override;
    Ref<String> defaultAppearance() const noexcept override;
    Quadding quadding() const noexcept override;

    // Whether all that is below the field was built.
    bool isValid() const noexcept { return _valid; }

protected:
    Dictionary& dictionary() const noexcept { return *_dict; }
    // How log lines name the field: the text of its `name`, or "<unknown>".
    Ref<::String> fieldLogName() const noexcept;

private:
    // What is mutable is filled by the first call that asks for it.
    const WeakRef<Field> _parent;
    std::vector<Ref<Field>> _children; // none is null
    const Type _type;
    Flags _flags = NoFlags;
    bool _valid = false;
    mutable std::uint32_t _cached = 0; // a bit for each attribute that the dictionary was asked for
    mutable Ref<String> _name;
    mutable Ref<String> _alternateName;
    mutable Ref<String> _mappingName;
    mutable Ref<Dictionary> _defaultResources;
    mutable Ref<String> _defaultAppearance;
    mutable Quadding _quadding = Quadding::NotSet;
    const Ref<Dictionary> _dict;
};

} // namespace Libraries::Files::PDF
