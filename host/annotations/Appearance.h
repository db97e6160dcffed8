#pragma once

#include <host/pages/Geometry.h>
#include <host/pages/PageTree.h>
#include <values/Stream.h>

#include <optional>
#include <string>

namespace Host {

// How annotations are shown.

// Whether a viewer shows an annotation, and whether it is printed, by `F`.
bool isShownOnScreen(const PDF::Document& document, const PDF::Dictionary& annotation) noexcept;
bool isPrinted(const PDF::Document& document, const PDF::Dictionary& annotation) noexcept;

// A form XObject that shows an annotation.
struct Appearance {
    Ref<PDF::Value> value; // the stream, or a reference to it, as the annotation has it
    Ref<PDF::Stream> stream;
};
// `N` of `AP`: a stream, or a dictionary of streams for the states of a button; null for anything else.
Ref<PDF::Value> normalAppearance(const PDF::Document& document, const PDF::Dictionary& annotation) noexcept;
// What such an entry, or a reference to it, has for the state; none where it has nothing for it.
std::optional<Appearance> appearanceIn(
    const PDF::Document& document, const Ref<PDF::Value>& normal, const Ref<::String>& state) noexcept;

// What of the XObject is seen, where its own matrix leads; none where it has no area, or none is said.
std::optional<Rectangle> appearanceBox(const PDF::Document& document, const PDF::Stream& stream) noexcept;
// The matrix that brings the XObject to the annotation's rectangle on the page, besides its own. None where nothing is
// seen: that box or `Rect` has no area.
std::optional<Matrix> appearanceMatrix(const PDF::Document& document, const PDF::Dictionary& annotation,
    const PDF::Stream& stream, const Page& page) noexcept;

} // namespace Host
