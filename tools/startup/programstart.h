#pragma once

#include <sys/types.h>

#include <QString>

/// What a program makes sure of before it does anything with the files and texts that it is given.
namespace programstart {

/// Whom a process runs for, and with whose rights.
struct Rights
{
    uid_t user;
    uid_t effectiveUser;
    gid_t group;
    gid_t effectiveGroup;
};

/// Why a program must not run with these rights; null: it may. The programs open files that their
/// arguments and inputs name, load plugins and run other programs by the search path: with the
/// rights of somebody else, they would lend them to whoever starts them.
const char *refusalOf(const Rights &rights);

/// The first thing in main(): ends the program with status 2, and in words, where it runs setuid or
/// setgid. Puts something in the place of closed standard streams, so that no file that is opened
/// later takes what the program prints; reading and writing them fails as before.
void begin(const char *program);

/// Why an argument can't be taken; empty: all can. One whose bytes aren't text in the encoding of
/// the surroundings names another file than it says, and two such may name the same one. Needs the
/// application object.
QString refusalOfArguments(int count, const char *const *arguments);

}  // namespace programstart
