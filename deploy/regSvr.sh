#!/bin/sh
# Registers Brindlewave IVR scripts (*.ivr) and the designer with the desktop
# of the current user, so that a double click on a script opens it in the
# designer that lies in this folder. A designer installed from its package
# has been registered for every user by the package, and is left to it.
#
# The designer starts this at every start, hidden and without waiting, so it
# must stay quiet, finish quickly when everything is already in place, and
# never report a failure: a desktop without the freedesktop tools, or a data
# folder that can't be written, simply goes without the registration.

MIME_TYPE=application/x-brindlewave-ivr
ENTRY_NAME=brindlewave-ivr-designer.desktop
PACKAGE_NAME=brindlewave-ivr.xml

# The folder of this script is the program folder; the designer also starts
# us with it as the working folder, which is the fallback.
program_folder() {
    case "$0" in
    */*) (cd "${0%/*}" && pwd -P) ;;
    *) pwd -P ;;
    esac
}

have() {
    command -v "$1" >/dev/null 2>&1
}

# Quotes a path for the Exec key of a desktop entry: inside double quotes a
# '"', '`', '$' and '\' need a backslash, and the key's own string escaping
# doubles every backslash again; a '%' is written twice.
exec_quote() {
    printf '%s' "$1" | sed -e 's/\\/\\\\\\\\/g' -e 's/["`$]/\\\\&/g' -e 's/%/%%/g'
}

# Writes $2 to the file $1 unless it already holds exactly that; succeeds
# only when the file was written. A temporary file and a rename keep a
# concurrent start from reading half a file.
write_if_different() {
    if [ -f "$1" ] && [ "$(cat "$1")" = "$2" ]; then
        return 1
    fi
    printf '%s\n' "$2" >"$1.$$" && mv -f "$1.$$" "$1" || {
        rm -f "$1.$$"
        return 1
    }
}

# True when the program folder $1 was installed as <prefix>/lib/<package>
# together with the menu entry and the script type in <prefix>/share, and
# the desktop reads that folder: the installation registered the designer
# for every user, and the user's own folders are left alone.
installed_for_everyone() {
    share=$(cd "$1/../../share" 2>/dev/null && pwd -P) || return 1
    [ -f "$share/applications/$ENTRY_NAME" ] \
        && [ -f "$share/mime/packages/$PACKAGE_NAME" ] || return 1
    case ":${XDG_DATA_DIRS:-/usr/local/share:/usr/share}:" in
    *":$share:"* | *":$share/:"*) return 0 ;;
    esac
    return 1
}

# True when the cache $2 is missing or older than the source $1.
stale() {
    [ ! -f "$2" ] || [ "$1" -nt "$2" ]
}

register() {
    folder=$(program_folder) || return 0
    [ -n "$folder" ] || return 0
    case "$folder" in
    *'
'*) return 0 ;; # a line break can't be written into a desktop entry
    esac
    installed_for_everyone "$folder" && return 0

    if [ -n "$XDG_DATA_HOME" ]; then
        data=$XDG_DATA_HOME
    elif [ -n "$HOME" ]; then
        data=$HOME/.local/share
    else
        return 0
    fi
    if [ -n "$XDG_CONFIG_HOME" ]; then
        config=$XDG_CONFIG_HOME
    elif [ -n "$HOME" ]; then
        config=$HOME/.config
    else
        config=
    fi

    mkdir -p "$data/mime/packages" "$data/applications" || return 0

    package="$data/mime/packages/$PACKAGE_NAME"
    write_if_different "$package" "<?xml version=\"1.0\" encoding=\"UTF-8\"?>
<mime-info xmlns=\"http://www.freedesktop.org/standards/shared-mime-info\">
  <mime-type type=\"$MIME_TYPE\">
    <comment>Brindlewave IVR script</comment>
    <glob pattern=\"*.ivr\"/>
  </mime-type>
</mime-info>"
    if have update-mime-database && stale "$package" "$data/mime/mime.cache"; then
        update-mime-database "$data/mime"
    fi

    entry="$data/applications/$ENTRY_NAME"
    entry_written=false
    if write_if_different "$entry" "[Desktop Entry]
Type=Application
Name=Brindlewave IVR Script Designer
Comment=Design the call flows of interactive voice response scripts
Exec=\"$(exec_quote "$folder")/ivr-designer\" %f
MimeType=$MIME_TYPE;
Categories=Development;
Terminal=false"; then
        entry_written=true
    fi
    if have update-desktop-database \
        && stale "$entry" "$data/applications/mimeinfo.cache"; then
        update-desktop-database "$data/applications"
    fi

    # The default is set when the entry is new or changed, or when the user
    # has no default for scripts at all; a default the user chose for another
    # program is left alone at every other start.
    if have xdg-mime; then
        if $entry_written || [ -z "$config" ] \
            || ! grep -q "^$MIME_TYPE=" "$config/mimeapps.list"; then
            xdg-mime default "$ENTRY_NAME" "$MIME_TYPE"
        fi
    fi
}

register </dev/null >/dev/null 2>&1
exit 0
