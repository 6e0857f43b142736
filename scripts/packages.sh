# The packages that the scripts need on Debian 12, and how they get them. Sourced, not run.

zet_build_packages=(cmake ninja-build g++ flex bison libfl-dev)
zet_test_packages=("${zet_build_packages[@]}" libgtest-dev clang libclang-rt-14-dev pkg-config binutils locales tzdata)
zet_bench_packages=("${zet_build_packages[@]}" libbenchmark-dev libeigen3-dev liblapacke-dev libmuparser-dev
                    libmuparserx-dev libudunits2-dev python3-numpy python3-numexpr)
zet_demo_packages=("${zet_build_packages[@]}" libgdal-dev xplanet-images)
zet_style_packages=("${zet_build_packages[@]}" clang-format clang-tidy)

# Installs those of the named packages that the machine does not have.
zet_install()
{
    local missing=() package
    for package in "$@"; do
        if [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" != installed ]; then
            missing+=("$package")
        fi
    done
    if [ ${#missing[@]} -eq 0 ]; then
        return 0
    fi
    echo "installing: ${missing[*]}"
    if [ "$(id -u)" -ne 0 ]; then
        echo "these packages are missing; install them, or run this script as root" >&2
        return 1
    fi
    export DEBIAN_FRONTEND=noninteractive
    apt-get -qq update </dev/null
    apt-get -qq install -y --no-install-recommends "${missing[@]}" </dev/null >/dev/null
}

# Generates the locales in which the tests run: one with a decimal comma, and "en_US".
zet_install_locales()
{
    local have
    have=$(locale -a 2>/dev/null)
    if ! grep -qx 'de_DE.utf8' <<<"$have"; then
        localedef -i de_DE -f UTF-8 de_DE.UTF-8
    fi
    if ! grep -qx 'en_US' <<<"$have"; then
        localedef -i en_US -f ISO-8859-1 en_US
    fi
}
