#pragma once

#include <QByteArray>

#include <array>

// Names that a disk takes and that something might take for more than a name.

struct OddName
{
    const char* what; ///< as a row of a test is called
    QByteArray bytes; ///< on the disk, without ending
};

// NOLINTBEGIN(misc-misleading-bidirectional): marks that mislead are what these names are for
inline const auto odd_names = std::to_array<OddName>({
    {"bold markup", "<b>bold<b>"},
    {"a picture in markup", "<img src=x>"},
    {"a link in markup", "<a href=x>link"},
    {"a heading behind a quote", "'<h1>big"},
    {"markup for all", "<!doctype html><table>"},
    {"what begins like XML", "<?xml?><b>x"},
    {"escaped markup", "&lt;b&gt;bold &amp; x"},
    {"formats of the C library", "%s%n%d%p 100%"},
    {"places for arguments", "%1 %2 %3"},
    {"places for arguments of a locale", "%L1 %99 %%1"},
    {"a mnemonic", "&File"},
    {"two ampersands", "R&&B & Soul"},
    {"a line break", "one\ntwo"},
    {"a line break of two characters", "one\r\ntwo"},
    {"a separator of lines", "one\xE2\x80\xA8two"},
    {"a separator of paragraphs", "one\xE2\x80\xA9two"},
    {"tabs", "one\ttwo\tthree"},
    {"an override of the direction", "song\xE2\x80\xAE"
                                     "3pm"},
    {"an embedding against the direction", "song\xE2\x80\xAB 3pm \xE2\x80\xAB"},
    {"isolates against the direction", "\xE2\x81\xA7one\xE2\x81\xA6two"},
    {"ends of isolates before an override", "\xE2\x81\xA9\xE2\x81\xA9\xE2\x80\xAEone"},
    {"an end of embeddings before an override", "\xE2\x80\xAC\xE2\x80\xAE"
                                                "one"},
    {"right-to-left marks", "\xE2\x80\x8Fone\xE2\x80\x8F"},
    {"an Arabic letter mark", "one\xD8\x9C"},
    {"Hebrew", "\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D"},
    {"control characters", "\x01one\x1B[31mtwo\x08\x7F"},
    {"what parts texts of several lengths", "one\xC2\x9Ctwo"},
    {"bytes that are no text", "\xFF\xFEone\xE9"},
    {"half of a character", "one\xE2\x80"},
    {"quotes", "it's \"one\" two"},
    {"what a shell would run", "$(touch x) `touch x`; touch x & | touch x"},
    {"an option", "-rf --help"},
    {"the home of somebody", "~root"},
    {"full stops", "..."},
    {"a way up with backslashes", "..\\..\\x"},
    {"a drive", "C:\\x"},
    {"a way up in an address", "%2e%2e%2fx"},
    {"an address", "javascript:alert(1)"},
    {"blanks at both ends", "  one  two  "},
    {"the longest", QByteArray(251, 'w')},
});
// NOLINTEND(misc-misleading-bidirectional)
