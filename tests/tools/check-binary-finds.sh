#!/usr/bin/env bash
# check-binary-finds.sh SOURCE DIRECTORY: check-binary.sh accepts a small library as it was described and finds each
# kind of change in it. The libraries are built in DIRECTORY.
set -euo pipefail
source=$1 directory=$2
rm -rf "$directory" && mkdir -p "$directory/abi"
cd "$directory"
cp "$source/framework/abi/ours.abignore" abi/
good_flags="-Wl,-z,relro,-z,now,-z,nodelete,-z,noexecstack"

cat >library.cpp <<'END'
#include <cmath>
namespace LCD {
#ifdef MORE_DATA
struct Report { int port; int speed; bool linked; };
#else
struct Report { int port; bool linked; };
#endif
class Test {
public:
    virtual ~Test();
#ifdef MORE_SLOTS
    virtual int before();
#endif
    virtual int count(const Report &report);
};
Test::~Test() = default;
#ifdef MORE_SLOTS
int Test::before() { return 1; }
#endif
int Test::count(const Report &report) { return report.port; }
#ifdef MORE_FUNCTIONS
int helper() { return 1; }
#endif
int version;
}
#ifdef TEXT_RELOCATION
asm(".text\n.quad exported\n.globl exported\nexported:\n ret\n");
#endif
END

# build NAME FLAGS...
build() {
    local name=$1
    shift
    "${CXX:-c++}" -std=c++17 -g -O0 -fPIC -shared -o "$name.so" library.cpp "$@"
}

# expect STATUS CHECK NAME: what check-binary.sh says of NAME.so
expect() {
    local wanted=$1 status=0
    "$source/tests/tools/check-binary.sh" "$2" "$3.so" abi >message.txt 2>&1 || status=$?
    [ "$status" -eq 77 ] && { echo "skipped: $(cat message.txt)"; return; }
    if [ "$wanted" = found ] && [ "$status" -eq 1 ] && grep -q "$3.so\|abidiff" message.txt; then return; fi
    if [ "$wanted" = accepted ] && [ "$status" -eq 0 ]; then return; fi
    echo "$2 of $3: expected $wanted, but the status is $status:"
    cat message.txt
    exit 1
}

build good $good_flags
for check in libraries symbols description; do
    UPDATE=1 "$source/tests/tools/check-binary.sh" "$check" good.so abi
    expect accepted "$check" good
done
expect accepted hardening good
printf 'relocations 1000\nlookups 1000\nbytes 100000\n' >abi/limits.txt
expect accepted load good
for limit in 'relocations 1' 'lookups 1' 'bytes 100' 'letters 1'; do
    echo "$limit" >abi/limits.txt
    status=0
    "$source/tests/tools/check-binary.sh" load good.so abi >message.txt 2>&1 || status=$?
    [ "$status" -eq 1 ] && grep -q "${limit% *}" message.txt || { echo "load of good: not found: $limit"; exit 1; }
done

build data $good_flags -DMORE_DATA && expect found description data
build slots $good_flags -DMORE_SLOTS && expect found description slots && expect found symbols slots
build functions $good_flags -DMORE_FUNCTIONS && expect found symbols functions
build needs $good_flags -Wl,--no-as-needed -lpthread -ldl -lQt5Core && expect found libraries needs
build lazy -Wl,-z,relro,-z,lazy,-z,nodelete && expect found hardening lazy
build unloadable -Wl,-z,relro,-z,now && expect found hardening unloadable
build writable -Wl,-z,norelro,-z,now,-z,nodelete && expect found hardening writable
build stack -Wl,-z,relro,-z,now,-z,nodelete,-z,execstack && expect found hardening stack
[ "$(uname -m)" != x86_64 ] ||
    { build text $good_flags -Wl,-z,notext -DTEXT_RELOCATION && expect found hardening text; }

# A function that only a newer Qt has.
cat >newer.cpp <<'END'
extern "C" void newer() asm("_ZN10QJsonArrayC1EOS_");
extern "C" void use() { newer(); }
END
"${CXX:-c++}" -fPIC -shared -o newer.so newer.cpp -lQt5Core && expect found qt-symbols newer
