# SPDX-License-Identifier: MIT
# Where a build looks for newer versions of itself. A distribution's package leaves both empty, and then the program looks
# for none: its versions come with the system's updates.

set(VESLORA_UPDATE_FEED "" CACHE STRING "Address of the feed of releases, by https; empty for a build without an updater")
set(VESLORA_UPDATE_KEY "" CACHE STRING "Ed25519 public key of the releases: base64 of its 32 bytes, as tools/sign-release prints it")

if(VESLORA_UPDATE_FEED AND NOT VESLORA_UPDATE_KEY OR VESLORA_UPDATE_KEY AND NOT VESLORA_UPDATE_FEED)
    message(FATAL_ERROR "VESLORA_UPDATE_FEED and VESLORA_UPDATE_KEY belong together: nothing without a signature is ever "
                        "offered, so a feed needs its key.")
endif()
if(VESLORA_UPDATE_FEED AND NOT VESLORA_UPDATE_FEED MATCHES "^https://[A-Za-z0-9.-]+(:[0-9]+)?/[A-Za-z0-9._~/%-]+$")
    message(FATAL_ERROR "VESLORA_UPDATE_FEED must be the https address of a file, without a query: ${VESLORA_UPDATE_FEED}")
endif()
# 32 bytes are 42 characters, one of which two bits count, and one for padding. CMake knows no count of repetitions.
if(VESLORA_UPDATE_KEY)
    string(LENGTH "${VESLORA_UPDATE_KEY}" length)
    if(NOT length EQUAL 44 OR NOT VESLORA_UPDATE_KEY MATCHES "^[A-Za-z0-9+/]+=$")
        message(FATAL_ERROR "VESLORA_UPDATE_KEY must be the base64 of 32 bytes: ${VESLORA_UPDATE_KEY}")
    endif()
endif()
