# tools/front_door.sh — what ./varilum4 and ./check share: packages and builds. Sourced, not run.
# Everything said goes to standard error, so that a program's own output stays clean.

say() { printf '%s\n' "$*" >&2; }
fail() {
    say "$*"
    exit 1
}

# packages FILE...: the names listed in the files.
packages() { sed -e 's/#.*//' "$@" | tr -s ' \n' '\n' | sed '/^$/d'; }

# missing_packages NAME...: those of them that are not installed.
missing_packages() {
    # dpkg-query fails when it does not know a package, and still lists the others.
    { dpkg-query -W -f '${Package} ${db:Status-Status}\n' "$@" 2>/dev/null || true; } |
        awk -v wanted="$*" '
            $2 == "installed" {have[$1] = 1}
            END {
                n = split(wanted, names, " ")
                for (i = 1; i <= n; ++i) if (!(names[i] in have)) print names[i]
            }'
}

# install_packages FILE...: installs what is missing, or says what to install.
install_packages() {
    local wanted missing sudo=()
    mapfile -t wanted < <(packages "$@")
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        # Not Debian: trust what is there, and name the rest if the build tools are not.
        if command -v cmake >/dev/null && command -v ninja >/dev/null && command -v c++ >/dev/null
        then
            return
        fi
        fail "This system has no apt. Install what these Debian packages hold, then run again:" \
            "${wanted[*]}"
    fi
    mapfile -t missing < <(missing_packages "${wanted[@]}")
    [ ${#missing[@]} -eq 0 ] && return
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null ||
            fail "These packages are missing; install them as root, then run again: ${missing[*]}"
        sudo=(sudo)
    fi
    say "Installing packages: ${missing[*]}"
    "${sudo[@]}" apt-get update -qq >&2 || say "The package list could not be refreshed; going on."
    "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}" >&2 ||
        fail "Installing failed. See above; when it is mended, run again."
}

# build PRESET [TARGET...]: configures once, then builds what changed.
build() {
    local preset=$1 folder="$root/build/$1"
    shift
    if [ ! -f "$folder/build.ninja" ]; then
        say "Configuring build/$preset"
        (cd "$root" && cmake --preset "$preset" >/dev/null) ||
            fail "Configuring build/$preset failed; see above."
    fi
    case "$(ninja -C "$folder" -n "$@" 2>&1 | tail -n 1)" in
        *"no work to do"*) return ;;
    esac
    say "Building build/$preset"
    ninja -C "$folder" "$@" >&2 || fail "Building build/$preset failed; see above."
}
