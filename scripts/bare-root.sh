# shellcheck shell=bash
# Sourced by the scripts that make a bare root of a Debian release. They have defined say TEXT, which prints a line, and
# die EXIT-CODE TEXT, which prints TEXT as an error and ends the script. Exit code 3: a root could not be made.

suites=(bookworm trixie)
PATH=$PATH:/usr/sbin:/sbin

# check_mirror URL: a bare root has no certificates for https. The packages are signed.
check_mirror() {
    [[ $1 == http://* ]] || die 2 "--mirror '$1': an address that begins with http:// is allowed (see --help)"
}

need_root_and_debootstrap() {
    [ "$(id -u)" -eq 0 ] || die 3 "making a root and mounting in it needs root: run this with sudo"
    command -v debootstrap >/dev/null || die 3 "debootstrap is missing: run scripts/setup fresh"
}

# Prints the first http mirror among the package sources of this machine.
mirror_of_this_machine() {
    local mirror
    # shellcheck disable=SC2016
    mirror=$(apt-get indextargets --format '$(REPO_URI) $(COMPONENT)' 'Identifier: Packages' 2>/dev/null |
        awk '$2 == "main" && $1 ~ /^http:/ && $1 !~ /security/ { print $1; exit }') || true
    [ -n "$mirror" ] || die 3 "no http mirror among the package sources of this machine: name one with --mirror"
    printf '%s\n' "$mirror"
}

# use_folder FOLDER LOCK: FOLDER is new, empty or of an earlier run, which has left its lock file there. It is locked until
# the script ends.
use_folder() {
    if [ -e "$1" ] && [ ! -e "$1/$2" ] && [ -n "$(ls -A "$1")" ]; then
        die 2 "--folder '$1': a new or empty folder, or one of an earlier run, is allowed (see --help)"
    fi
    mkdir -p "$1"
    exec {lock}>"$1/$2"
    flock --nonblock "$lock" || die 3 "another run is using $1"
}

# remove_root ROOT: nothing may be removed through a mount, such as one made by hand in a root that was kept.
remove_root() {
    local mount
    while read -r _ _ _ _ mount _; do
        printf -v mount '%b' "$mount"
        [[ $mount != "$1" && $mount != "$1"/* ]] || die 3 "$mount is mounted, so $1 stays: unmount it first"
    done </proc/self/mountinfo
    rm -rf --one-file-system "$1"
}

# isolated COMMAND ...: runs the command with its own mounts and processes, which end with it and with this script, even
# when the script is killed.
isolated() {
    # The first process of a namespace ignores a signal without a handler. A shell makes its background processes ignore
    # Ctrl-C, which the tests would inherit.
    # shellcheck disable=SC2016
    setsid setpriv --pdeathsig KILL unshare --mount --pid --fork --kill-child \
        bash -c 'trap "exit 143" TERM; env --default-signal=INT,QUIT "$@" & wait $!' bash "$@" </dev/null &
    running=$!
    local code=0
    wait "$running" || code=$?
    running=
    return $code
}

running=
made_roots=()
# remove_roots_at_end: however the script ends, what runs in a root is stopped. The roots are removed unless $keep is set.
remove_roots_at_end() {
    trap finish_roots EXIT
    trap 'exit 130' INT
    trap 'exit 143' TERM HUP
}

finish_roots() {
    local root
    trap '' INT TERM HUP
    if [ -n "$running" ]; then
        # Repeated, as the process may not have its handler yet.
        while kill -TERM -- "-$running" 2>/dev/null || kill -TERM "$running" 2>/dev/null; do sleep 0.1; done
    fi
    [ -z "${keep:-}" ] || return 0
    for root in "${made_roots[@]}"; do remove_root "$root"; done
}

# copy_settings ROOT: the network settings of this machine, without which the root might not reach a mirror or a registry.
copy_settings() {
    local root=$1 key value
    apt-config dump 2>/dev/null | grep -E '^Acquire::(https?::|Check-|Retries|ForceIP)' \
        >"$root/etc/apt/apt.conf.d/00machine" || true
    cp /etc/hosts "$root/etc/hosts"
    if [ -d /usr/local/share/ca-certificates ]; then
        mkdir -p "$root/usr/local/share"
        cp -r /usr/local/share/ca-certificates "$root/usr/local/share"
    fi
    command -v npm >/dev/null || return 0
    for key in registry cafile proxy https-proxy noproxy; do
        value=$(npm config get "$key" 2>/dev/null) || continue
        [[ -n $value && $value != null && $value != undefined ]] || continue
        if [ "$key" = cafile ]; then
            cp "$value" "$root/root/npm-ca.pem"
            value=/root/npm-ca.pem
        fi
        printf '%s=%s\n' "$key" "$value" >>"$root/root/.npmrc"
    done
}

# make_root SUITE ROOT MIRROR LOG
make_root() {
    local root=$2 begin=$SECONDS proxy=
    remove_root "$root"
    made_roots+=("$root")
    eval "$(apt-config shell proxy Acquire::http::Proxy 2>/dev/null)"
    [ -z "$proxy" ] || export http_proxy="${http_proxy:-$proxy}"
    say "making a bare $1 in $root"
    if ! isolated debootstrap --variant=minbase --force-check-gpg "$1" "$root" "$3" >"$4" 2>&1; then
        tail -n 20 "$4" >&2
        die 3 "debootstrap failed; its last lines are above"
    fi
    copy_settings "$root"
    say "the root is made (Debian $(cat "$root/etc/debian_version"), $((SECONDS - begin)) s)"
}

# run_in_root ROOT FOLDER COMMAND: runs the shell's COMMAND in a folder of the root, with no environment of this machine but
# the proxies. $shared, if it is set, is a folder of this machine that the command sees as /root/shared.
run_in_root() {
    local name
    local surroundings=(HOME=/root TERM="${TERM:-dumb}" PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin)
    for name in http_proxy https_proxy no_proxy HTTP_PROXY HTTPS_PROXY NO_PROXY; do
        [ -z "${!name:-}" ] || surroundings+=("$name=${!name}")
    done
    # shellcheck disable=SC2016
    isolated bash -ec 'mount --bind "$1" "$1"  # as in a real root, so that namespaces can be made in it
        mount -t proc proc "$1/proc"
        mount -t devpts -o ptmxmode=666,mode=620,gid=5 devpts "$1/dev/pts"
        if [ -n "$4" ]; then mkdir -p "$1/root/shared"; mount --bind "$4" "$1/root/shared"; fi
        exec chroot "$1" env -i "${@:5}" sh -c "cd $2 && $3"' bash "$1" "$2" "$3" "${shared:-}" "${surroundings[@]}"
}
