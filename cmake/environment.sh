# Sourced by the commands at the root, which work in their own folder.

# need PACKAGE...: installs the Debian packages that are missing, or says what to install.
need() {
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q '^install ok installed' || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    if [ "$(id -u)" != 0 ] || ! command -v apt-get > /dev/null; then
        echo "Please install first: ${missing[*]}" >&2
        exit 2
    fi
    step "looking which packages there are" apt-get update
    step "installing ${missing[*]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y --no-install-recommends "${missing[@]}"
}

# step WORDS COMMAND...: a line with the words, before the command is run, and with its time in seconds, after it. What
# the command prints goes to build/step.log, and is shown when it fails. A step within a step is a part of it.
step() {
    local words=$1 started=$SECONDS status=0
    shift
    [ -n "${IN_STEP:-}" ] && { "$@"; return; }
    mkdir -p build
    printf '%s ... ' "$words"
    IN_STEP=1 "$@" > build/step.log 2>&1 || status=$?
    if [ $status -ne 0 ]; then
        printf 'failed after %d s:\n' $((SECONDS - started))
        cat build/step.log
        echo "Failed: $words"
        return $status
    fi
    printf '%d s\n' $((SECONDS - started))
}

# count_tests LOG: adds the tests that ctest tells of to `ran` and `skipped`.
ran=0
skipped=0
count_tests() {
    ran=$((ran + $(grep -c '^ *[0-9]*/[0-9]* Test .* Passed ' "$1" || true)))
    skipped=$((skipped + $(grep -c '^ *[0-9]*/[0-9]* Test .*\*\*\*Skipped ' "$1" || true)))
}
