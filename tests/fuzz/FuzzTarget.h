#pragma once

#include <QString>

#include <cstddef>

/*! What libFuzzer, and the replay of the inputs in this tree, call with each input; each target defines it once. It
 *  returns whatever the bytes are: an input that must not be refused or taken as it was ends the program. */
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size);

namespace FuzzTarget
{
/*! Ends the program, and says why, unless \a holds. */
void Require(bool holds, const char* law, const QString& found = {});
/*! Writes the input into a file of the current folder, for what reads files alone. */
void WriteFile(const QString& name, const unsigned char* data, std::size_t size);
/*! What users are told of an input is one line. */
void RequireOneLine(const QString& text);
} // namespace FuzzTarget
