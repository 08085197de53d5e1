#!/usr/bin/env bash
# The desktops besides the plain one: tools/desktops reads this file, and a function makes each.
# What they use of it is told there.
# shellcheck disable=SC2154  # log and home are its own

# Software draws in place of the graphics card that a virtual desktop lacks.
export LIBGL_ALWAYS_SOFTWARE=1

# The work area begins below a panel at the top.
panel_at_top() {
    xprop -root _NET_WORKAREA | grep -q '= [0-9]*, [1-9]'
}

# The work area ends above a panel at the bottom.
panel_at_bottom() {
    xprop -root _NET_WORKAREA | grep -q '= 0, 0, 1280, [1-7]'
}

socket_of() {
    [[ -S $home/$1 ]]
}

desktop_i3() {
    one_screen
    # The usual bindings, without the programs that come with a whole session.
    grep -v '^exec ' /etc/i3/config >"$home/i3.conf"
    under i3 -c "$home/i3.conf"
    wallpaper
    blending
}

two_screens() {
    cat >"$home/xorg.conf" <<'END'
Section "ServerFlags"
    Option "AutoAddDevices" "false"
    Option "AutoAddGPU" "false"
    Option "DontVTSwitch" "true"
EndSection
Section "Monitor"
    Identifier "monitor"
    HorizSync 5-1000
    VertRefresh 5-200
    Modeline "1280x800" 83.5 1280 1352 1480 1680 800 803 809 831
    Modeline "320x480" 12 320 336 368 400 480 483 489 500
EndSection
Section "Device"
    Identifier "card"
    Driver "dummy"
    VideoRam 65536
EndSection
Section "Screen"
    Identifier "screen"
    Device "card"
    Monitor "monitor"
    DefaultDepth 24
    SubSection "Display"
        Depth 24
        Modes "1280x800"
    EndSubSection
EndSection
END
    start_x /usr/lib/xorg/Xorg -config "$home/xorg.conf" -logfile "$home/xorg.log" -novtswitch -sharevts -dpi 96
    xrandr --addmode DUMMY1 1280x800
    xrandr --output DUMMY0 --mode 1280x800 --primary \
        --output DUMMY1 --mode 1280x800 --right-of DUMMY0
}

desktop_screens() {
    desktop_openbox two_screens
}

desktop_metacity() {
    one_screen
    under metacity --compositor=xrender
    wallpaper
}

desktop_mutter() {
    one_screen
    under mutter --x11
}

desktop_xfce() {
    one_screen
    under xfwm4 --compositor=on
    wallpaper
    become_part xfce4-panel --disable-wm-check &
    within 30 panel_at_top || fail "the panel does not start"
}

desktop_kwin() {
    export XDG_CURRENT_DESKTOP=KDE KDE_FULL_SESSION=true KDE_SESSION_VERSION=5
    one_screen
    under kwin_x11
    become_part plasmashell --no-respawn &
    within 60 panel_at_bottom || fail "the panel does not start"
}

# GNOME asks the system's services for what only a whole machine has: here it finds none.
as_gnome() {
    export XDG_CURRENT_DESKTOP=GNOME
    export DBUS_SYSTEM_BUS_ADDRESS=$DBUS_SESSION_BUS_ADDRESS
}

ask_shell() {
    gdbus call --session --dest org.gnome.Shell --object-path /org/gnome/Shell --method "$@" \
        2>>"$log"
}

shows_windows() {
    ask_shell org.freedesktop.DBus.Properties.Set org.gnome.Shell OverviewActive '<false>' \
        >>"$log"
    ask_shell org.freedesktop.DBus.Properties.Get org.gnome.Shell OverviewActive | grep -q false
}

# It begins with all windows in miniature, once its own start has been shown.
leave_overview() {
    sleep 2
    within 30 shows_windows || fail "the shell stays in its overview"
}

desktop_gnome() {
    as_gnome
    one_screen
    under gnome-shell --x11
    within 60 panel_at_top || fail "the top bar does not come"
    leave_overview
}

shell_variable() {
    ask_shell org.gnome.Shell.Eval "imports.gi.GLib.getenv('$1')" | sed -n "s/.*\"\(.*\)\".*/\1/p"
}

# A Wayland desktop is one window on a bare X server, whose pointer, keys and pictures are the
# desktop's.
desktop_gnome_wayland() {
    as_gnome
    one_screen
    export XDG_SESSION_TYPE=wayland WAYLAND_DISPLAY=wayland-tirlo
    MUTTER_DEBUG_DUMMY_MODE_SPECS=1280x800 become_part env -u WAYLAND_DISPLAY \
        gnome-shell --wayland --nested --unsafe-mode --wayland-display "$WAYLAND_DISPLAY" &
    within 60 socket_of "$WAYLAND_DISPLAY" || fail "the shell does not start"
    leave_overview
    DISPLAY=$(shell_variable DISPLAY)
    XAUTHORITY=$(shell_variable XAUTHORITY)
    export DISPLAY XAUTHORITY
}

desktop_sway() {
    one_screen
    # It refuses to run as root: to itself it then is somebody else.
    local not_root=()
    ((EUID)) || not_root=(unshare --user --map-user=1000 --map-group=1000)
    cat >"$home/sway.conf" <<END
output X11-1 resolution 1280x800 position 0,0
bar position top
bindsym Mod1+1 workspace number 1
bindsym Mod1+2 workspace number 2
exec sh -c 'echo \$DISPLAY >$home/inner; echo \$WAYLAND_DISPLAY >$home/socket'
END
    export XDG_SESSION_TYPE=wayland SWAYSOCK=$home/sway.sock
    WLR_BACKENDS=x11 WLR_RENDERER=pixman become_part "${not_root[@]}" sway -c "$home/sway.conf" &
    within 30 test -s "$home/socket" || fail "the compositor or its X server does not start"
    DISPLAY=$(<"$home/inner")
    WAYLAND_DISPLAY=$(<"$home/socket")
    export DISPLAY WAYLAND_DISPLAY
}
