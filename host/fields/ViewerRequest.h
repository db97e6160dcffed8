#pragma once

#include <host/fields/FieldTree.h>
#include <values/Stream.h>

#include <optional>
#include <set>
#include <unordered_map>

namespace Host {

// `NeedAppearances` of a form: whether it asks viewers to draw all fields anew.
class ViewerRequest {
public:
    // The document and the tree must outlive it.
    ViewerRequest(Ref<PDF::Document> document, const FieldTree& tree) noexcept;

    // Asks them, for fields that are filled and not drawn.
    void make() noexcept;
    // For fields that were drawn. Viewers would lose what an engine drew, so the request is taken back then. Gives what
    // people should know of it, and which other fields have values that aren't seen without it; empty for nothing.
    std::string noteDrawn(const std::vector<std::size_t>& fields, bool isByEngine) noexcept;

private:
    bool isMade() const noexcept;
    bool needsViewers(const FieldNode& field) noexcept;
    bool showsText(const Ref<PDF::Stream>& look) noexcept;

    const Ref<PDF::Document> _document;
    const FieldTree& _tree;
    bool _isOurs = false;
    // Fields whose values only viewers draw; absent until an engine draws.
    std::optional<std::set<std::size_t>> _needing;
    std::unordered_map<const PDF::Stream*, bool> _looks; // that were examined: whether they show text
};

} // namespace Host
