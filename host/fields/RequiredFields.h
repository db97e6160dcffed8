#pragma once

#include <host/fields/FieldTree.h>

#include <set>

namespace Host {

// The required fields of a form that are empty, while it is filled: texts and choices without a value, and check boxes
// and radio buttons that are off.
class RequiredFields {
public:
    // The tree must outlive it.
    explicit RequiredFields(const FieldTree& tree) noexcept;

    void noteFilled(std::size_t field, bool isEmpty) noexcept;
    // What people should know of those that are left empty; empty for nothing.
    std::string warning() const noexcept;

private:
    const FieldTree& _tree;
    std::set<std::size_t> _empty;
};

} // namespace Host
