#pragma once

#include <host/pages/Edit.h>
#include <host/pages/PageTree.h>

#include <functional>
#include <unordered_map>
#include <vector>

namespace Host {

// Takes annotations off their pages, as a part of an edit.
class AnnotationLists {
public:
    using Annotations = std::vector<Ref<PDF::Dictionary>>;

    // Those for which the function is true go. The edit must live as long.
    AnnotationLists(Edit& edit, std::function<bool(const PDF::Dictionary&)> goes) noexcept
        : _edit(edit), _goes(std::move(goes))
    {
    }

    // Takes them off the page, and gives them in their order, each once; as long as this lives.
    const Annotations& takeOff(const Page& page) noexcept;

private:
    // A list of annotations, which pages may share.
    struct List {
        Annotations gone;
        Ref<PDF::Value> rest; // null when nothing is left
    };
    List split(const PDF::Array& array, bool isShareable) noexcept;

    Edit& _edit;
    const std::function<bool(const PDF::Dictionary&)> _goes;
    std::unordered_map<const PDF::Array*, List> _lists;
};

} // namespace Host
