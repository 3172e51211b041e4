// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

// The portal's proof that the user has allowed this program to press keys. Kept in the user's data folder,
// readable by the user alone. Blocks on the disk; any thread.
namespace RestoreToken {

// Empty if there is none.
QString read();

// Replaces the token; without a writable disk the portal asks again next time.
void write(const QString &token);

} // namespace RestoreToken
