#!/usr/bin/env bash
# Start-up time and idle memory of the program against a bare Qt Widgets window, and with a
# 100,000-record library against an empty one.
# Usage: bench/startup.sh PATH_TO_VELDTONE [RUNS]
# Starts each program under a virtual X server with an empty home, alternately, RUNS times
# (default 5), and takes the time until its window is viewable (polled with xdotool) and its
# resident memory 2 s later; then counts, once each under callgrind, the instructions both run
# until their first frame is drawn, which the machine's load does not change. Prints
# "name value unit" lines with the medians.
set -euo pipefail
app=$(realpath "${1:?usage: startup.sh PATH_TO_VELDTONE [RUNS]}")
runs=${2:-5}
here=$(cd "$(dirname "$0")" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# The bare window is built here with the same compiler and Qt, in Release.
mkdir -p "$scratch/bare"
cat >"$scratch/bare/main.cpp" <<'CPP'
#include <QApplication>
#include <QTimer>
#include <QWidget>
#include <QWindow>
// Quits once the first expose has been answered, as the program does under the same variable.
class FirstFrame : public QObject
{
protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Expose && static_cast<QWindow*>(watched)->isExposed())
            QTimer::singleShot(0, qApp, &QCoreApplication::quit);
        return false;
    }
};
int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QWidget window;
    window.setWindowTitle(QStringLiteral("Bare"));
    window.resize(880, 660);
    window.show();
    FirstFrame firstFrame;
    if (qEnvironmentVariableIsSet("VELDTONE_QUIT_AFTER_FIRST_FRAME"))
        window.windowHandle()->installEventFilter(&firstFrame);
    return app.exec();
}
CPP
cat >"$scratch/bare/CMakeLists.txt" <<'CMAKE'
cmake_minimum_required(VERSION 3.25)
project(bare LANGUAGES CXX)
set(CMAKE_CXX_STANDARD 20)
find_package(Qt6 REQUIRED COMPONENTS Widgets)
add_executable(bare main.cpp)
target_link_libraries(bare PRIVATE Qt6::Widgets)
CMAKE
cmake -S "$scratch/bare" -B "$scratch/bare/build" -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build "$scratch/bare/build" >/dev/null
bare="$scratch/bare/build/bare"

# One measurement inside the X server: "milliseconds kilobytes".
cat >"$scratch/measure.sh" <<'SH'
#!/usr/bin/env bash
set -u
program=$1
start=$(date +%s%N)
"$program" >/dev/null 2>&1 &
pid=$!
until xdotool search --onlyvisible --pid "$pid" >/dev/null 2>&1; do
    kill -0 "$pid" 2>/dev/null || { echo "failed 0"; exit 0; }
done
end=$(date +%s%N)
sleep 2
rss=$(awk '/^VmRSS:/ {print $2}' "/proc/$pid/status")
kill "$pid"
wait "$pid" 2>/dev/null
echo "$(( (end - start) / 1000000 )) $rss"
SH
chmod +x "$scratch/measure.sh"

# A library of 100,000 records in the program's own file format.
awk 'BEGIN {
    srand(42); printf "[";
    for (i = 0; i < 100000; i++) {
        id = ""; for (j = 0; j < 32; j++) { id = id sprintf("%X", int(rand() * 16)); if (j == 7 || j == 11 || j == 15 || j == 19) id = id "-" }
        title = sprintf("Artist %d - Song Number %d (Official Video)", i % 997, i);
        printf "%s{\"id\":\"%s\",\"title\":\"%s\",\"channel\":\"Artist %dVEVO\",\"duration\":\"%d:%02d\",", (i ? "," : ""), id, title, i % 997, 2 + i % 5, i % 60;
        printf "\"format\":\"mp3\",\"quality\":\"320\",\"filePath\":\"\\/home\\/listener\\/Music\\/Veldtone\\/%s.mp3\",", title;
        printf "\"fileSize\":\"%d.%d MB\",\"thumbnailUrl\":\"https:\\/\\/i.ytimg.com\\/vi\\/v%010d\\/maxresdefault.jpg\",", 2 + i % 9, i % 10, i;
        printf "\"completedAt\":%d.%d,\"youtubeUrl\":\"https:\\/\\/www.youtube.com\\/watch?v=v%010d\"}", 700000000 + i * 900, i % 1000, i;
    }
    printf "]";
}' >"$scratch/library.json"

measure() {
    # xvfb-run -a can hand two servers started at once the same display, and a program then
    # fails to connect; such a run is taken again rather than counted as 0 ms.
    local attempt result
    for attempt in 1 2 3; do
        local home="$scratch/home-$RANDOM$RANDOM"
        mkdir -p "$home"
        if [[ ${2:-} == library ]]; then
            mkdir -p "$home/.local/share/Veldtone"
            cp "$scratch/library.json" "$home/.local/share/Veldtone/history.json"
        fi
        result=$(HOME="$home" XDG_CONFIG_HOME="$home/.config" XDG_DATA_HOME="$home/.local/share" \
            XDG_CACHE_HOME="$home/.cache" XDG_RUNTIME_DIR="$home/runtime" \
            xvfb-run -a -s "-screen 0 1280x900x24" "$scratch/measure.sh" "$1" 2>/dev/null)
        if [[ $result != failed* ]]; then
            echo "$result"
            return 0
        fi
    done
    echo "$1 never showed a window" >&2
    return 1
}

app_ms=() app_kb=() bare_ms=() library_ms=()
for _ in $(seq 1 "$runs"); do
    read -r ms kb <<<"$(measure "$app")" && [[ -n $ms ]] || exit 1
    app_ms+=("$ms") app_kb+=("$kb")
    read -r ms _ <<<"$(measure "$bare")" && [[ -n $ms ]] || exit 1
    bare_ms+=("$ms")
    read -r ms _ <<<"$(measure "$app" library)" && [[ -n $ms ]] || exit 1
    library_ms+=("$ms")
done

# Instructions to the first frame: "Ir" from callgrind's totals line.
instructions() {
    local home="$scratch/home-ir-$RANDOM$RANDOM" out="$scratch/callgrind-$RANDOM$RANDOM"
    mkdir -p "$home"
    HOME="$home" XDG_CONFIG_HOME="$home/.config" XDG_DATA_HOME="$home/.local/share" \
        XDG_CACHE_HOME="$home/.cache" XDG_RUNTIME_DIR="$home/runtime" \
        VELDTONE_QUIT_AFTER_FIRST_FRAME=1 \
        xvfb-run -a -s "-screen 0 1280x900x24" \
        valgrind --tool=callgrind --callgrind-out-file="$out" "$1" >/dev/null 2>&1 || true
    awk '/^totals:/ {print $2}' "$out" 2>/dev/null
}
app_ir=$(instructions "$app")
bare_ir=$(instructions "$bare")

median() { printf '%s\n' "$@" | sort -n | awk '{v[NR]=$1} END {print (NR % 2) ? v[(NR+1)/2] : (v[NR/2] + v[NR/2+1]) / 2}'; }
app_median=$(median "${app_ms[@]}")
bare_median=$(median "${bare_ms[@]}")
rss_median=$(median "${app_kb[@]}")
library_median=$(median "${library_ms[@]}")
echo "startup_window_ms $app_median ms"
echo "startup_bare_qt_window_ms $bare_median ms"
awk -v a="$app_median" -v b="$bare_median" 'BEGIN {printf "startup_ratio_vs_bare_qt %.2f ratio\n", (b > 0 ? a / b : 0)}'
awk -v a="$library_median" -v b="$app_median" 'BEGIN {printf "startup_with_100k_library_ratio %.2f ratio\n", (b > 0 ? a / b : 0)}'
if [[ -n $app_ir && -n $bare_ir ]]; then
    echo "startup_instructions_app $app_ir instructions"
    echo "startup_instructions_bare_qt $bare_ir instructions"
    awk -v a="$app_ir" -v b="$bare_ir" \
        'BEGIN {printf "startup_instructions_ratio_vs_bare_qt %.2f ratio\n", a / b}'
else
    echo "callgrind gave no count (is valgrind installed?)" >&2
fi
awk -v k="$rss_median" 'BEGIN {printf "idle_rss_mb %.1f MB\n", k / 1024}'
