// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <string>
#include <string_view>

namespace lumora {

/// The name of the catalogues: LANGUAGE/LC_MESSAGES/lumora.mo.
inline constexpr const char* kCatalogueName = "lumora";

/// Names the folder with the catalogues; the process's locale says which of them is read, when the
/// first text is shown. Texts are UTF-8 whatever the locale's encoding is.
void useCatalogues(const std::filesystem::path& folder);

/// Takes the C locale's weekdays and times, or its numbers, where the user's would be in another
/// encoding than UTF-8. `useCatalogues` does that, too; it is due again when the process's locale
/// was set anew.
void keepToUtf8();

/// The text in the user's language: itself where no catalogue has it. Valid as long as the process.
const char* translated(const char* text);

/// The same for a text that means several things: `context` says which, and is never shown.
const char* translatedIn(const char* context, const char* text);

/// The same for a text in which `count` stands: `one` and `many` are the forms of the source, and a
/// catalogue has as many as its language takes.
const char* translatedFor(std::int64_t count, const char* one, const char* many);

/// Marks a text that is translated where it is shown.
constexpr const char* toTranslate(const char* text) { return text; }

/// `text` with its places "%1$s", "%2$s" ... up to "%9$s" filled with `values`, and "%%" as "%".
/// Anything else stays as it stands, a place without a value, too. In a language that is written
/// from right to left a value of Latin letters keeps its own direction.
std::string filled(std::string_view text, std::initializer_list<std::string_view> values);

/// Whether the language of the texts is written from right to left.
bool isRightToLeft();

}  // namespace lumora
