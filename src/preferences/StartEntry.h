#pragma once

// Whether the desktop starts the program with the person's session.
namespace startentry
{

bool isSet();
// False when the desktop's list of programs could not be changed.
bool set(bool on);

} // namespace startentry
