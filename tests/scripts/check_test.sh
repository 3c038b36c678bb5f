#!/bin/bash
# Tests that a check of scripts/ passes good trees and finds what it is for: check_test.sh NAME
set -euo pipefail
scripts=$(dirname "$(dirname "$(dirname "$(readlink -f "$0")")")")/scripts
tree=$(mktemp -d)
trap 'rm -rf "$tree"' EXIT

# put FILE LINE...: writes a file of the tree.
put() {
    mkdir -p "$(dirname "$tree/$1")"
    printf '%s\n' "${@:2}" > "$tree/$1"
}

# passes CHECK, finds CHECK TEXT...: runs the check on the tree, which is then empty again.
passes() {
    local said
    said=$("$scripts/$1" "$tree" 2>&1) || { echo "$1 fails on a good tree: $said"; exit 1; }
    rm -rf "${tree:?}"/*
}
finds() {
    local said
    if said=$("$scripts/$1" "$tree" 2>&1); then
        echo "$1 does not find: $2"
        exit 1
    fi
    for text in "${@:2}"; do
        grep -q -F -e "$text" <<< "$said" || { echo "$1 does not say '$text' but: $said"; exit 1; }
    done
    rm -rf "${tree:?}"/*
}

includes() {
    put src/base/a.h '#include <vector>' '#include "base/b.h"'
    put src/base/b.h
    put src/store/c.cpp '#include "base/a.h"' '#include "store/c.h"'
    put src/store/c.h '  #  include "base/b.h"' '// an #include "shell/x.h" in a comment is none'
    passes check-includes

    put src/base/a.h '' '#include "store/c.h"'
    put src/store/c.h
    finds check-includes 'src/base/a.h:2: base (floor 1) must not include "store/c.h" (floor 2)'
    put src/base/a.cpp '#include "geometry/c.h"'
    put src/geometry/c.h
    finds check-includes 'src/base/a.cpp:1: base (floor 1) must not include "geometry/c.h" (floor 1)'
    put src/store/a.h '#include "store/b.h"'
    put src/store/b.h '#include "store/c.h"'
    put src/store/c.h '#include "store/a.h"'
    finds check-includes 'in a circle: store/a.h -> store/b.h -> store/c.h -> store/a.h'
    put src/store/a.h '#include "store/a.h"'
    finds check-includes 'in a circle: store/a.h -> store/a.h'
    put src/store/a.cpp '#include "b.h"'
    put src/store/b.h
    finds check-includes 'src/store/a.cpp:1: include "b.h" must be written as "folder/header.h"'
    put src/store/a.cpp '#include "store/gone.h"'
    finds check-includes 'there is no such header'
    put src/attic/a.cpp
    finds check-includes 'the folder attic has no floor'
}

graphics_headers() {
    put src/platform/a.cpp '#include <SDL.h>' '#include <epoxy/gl.h>'
    put src/base/a.cpp '#include <string>' '// #include <SDL.h>' '#include "platform/GL.h"'
    passes check-graphics-headers
    for header in '<SDL2/SDL.h>' '<SDL.h>' '"SDL_events.h"' '<GL/gl.h>' '<GLES3/gl3.h>' '<EGL/egl.h>' '<epoxy/gl.h>' \
        '<ft2build.h>' '<freetype/freetype.h>'; do
        put src/gooey/a.h '' "#include $header"
        finds check-graphics-headers 'src/gooey/a.h:2:' 'only src/platform may include'
    done
}

file_length() {
    seq 700 > "$tree/lines"
    mkdir "$tree/src"
    mv "$tree/lines" "$tree/src/a.cpp"
    passes check-file-length
    mkdir "$tree/tests"
    seq 701 > "$tree/tests/a b.h"
    finds check-file-length 'tests/a b.h: 701 lines'
}

format() {
    command -v clang-format > /dev/null || exit 77 # counts as skipped
    put .clang-format 'BasedOnStyle: LLVM'
    put src/a.cpp 'int A();'
    passes check-format
    put tests/a.cpp 'int  A( );'
    finds check-format 'tests/a.cpp'
}

"$1"
