#pragma once

#include <document/Document.h>
#include <forms/Form.h>

#include <vector>

namespace Libraries::Files::PDF {

class FormObj final : public ::Object, public virtual Form {
public:
    // Builds the whole tree, of at most `maxFields` fields.
    FormObj(Ref<Document> document, Ref<Dictionary> dictionary, std::uint64_t maxFields) noexcept;
    ~FormObj() noexcept override;

    // Form
    bool needAppearances() const noexcept override;
    Ref<Number> quadding() const noexcept override;
    Ref<String> defaultAppearance() const noexcept override;
    Ref<Dictionary> defaultResources() const noexcept override;
    Ref<Array> calculationOrder() const noexcept override;
    std::uint64_t fieldCount() const noexcept override { return _fields.size(); }
    Ref<Field> field(std::uint64_t index) const noexcept override;

    // Whether the whole tree was built. Otherwise the fields before the failure are there.
    bool isValid() const noexcept { return _valid; }

private:
    // What is mutable is filled by the first call that asks for it.
    const Ref<Dictionary> _dict;
    bool _valid = false;
    std::vector<Ref<Field>> _fields; // none is null
    mutable std::uint32_t _cached = 0; // a bit for each attribute that the dictionary was asked for
    mutable Ref<Number> _quadding;
    mutable Ref<String> _defaultAppearance;
    mutable Ref<Dictionary> _defaultResources;
    mutable Ref<Array> _calculationOrder;
    mutable bool _needAppearances = false;
};

} // namespace Libraries::Files::PDF
