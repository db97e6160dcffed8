# Sourced by the commands at the root.

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
    apt-get update -qq
    DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" > /dev/null
}
