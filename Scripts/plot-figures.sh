#!/usr/bin/env bash
# Puts the figures that Scripts/benchmark.sh has kept into Documents/Performance.md: its tables, between
# the comments "figures NAME" and "end", and the pictures in Documents/figures. The picture of many
# models is drawn from the table of Documents/Scale.md.
#
#     Scripts/plot-figures.sh FIGURES
set -euo pipefail
cd "$(dirname "$0")/.."
. Scripts/packages.sh
. Scripts/checking.sh
need_packages gnuplot-nox

figures=$1
pictures=Documents/figures
mkdir -p "$pictures"

# Prints the rows of the tables, and of their works, that match expressions, separated by tabs.
select_rows() { awk -F '\t' -v t="$1" -v w="${2-}" '$1 ~ t && $2 ~ w' "$figures"; }

# Prints a table as Markdown. Where the figures are of one kind of work over its amount, the ratio to
# the amount before takes the place of spread and target.
print_markdown() {
    select_rows "^$1\$" | awk -F '\t' -v table="$1" '
        function row(a, b, c, d) { print "| " a " | " b " | " c " | " d " |" }
        BEGIN { if (table == "growth") { print "| work | nanoseconds | to the size before |\n|---|---|---|" }
                else if (table ~ /^(functions|memory|calls)$/) { print "| work | figure |\n|---|---|" }
                else { row("work", "target", "median", "least and most"); print "|---|---|---|---|" } }
        table == "growth" {
            kind = $2; sub(/^[0-9]+ /, "", kind)
            print "| " $2 " | " $3 " | " (kind == before ? sprintf("%.2f", $3 / cost) : "") " |"
            before = kind; cost = $3; next }
        table ~ /^(functions|memory|calls)$/ { print "| " $2 " | " $3 " |"; next }
        { row($2, $6, $3, $4 " to " $5) }'
}

# Replaces the tables of the document by those of the figures.
replace_tables() {
    local document=Documents/Performance.md name
    while IFS= read -r line; do
        case $line in
            "<!-- figures "*)
                name=${line#<!-- figures } name=${name% -->}
                printf '%s\n\n' "$line"
                print_markdown "$name"
                while IFS= read -r line && [ "$line" != "<!-- end -->" ]; do :; done
                printf '\n%s\n' "$line" ;;
            "<!-- measured -->"*)
                printf '<!-- measured --> %s\n' "$(sed -n '1s/^# //p' "$figures")" ;;
            *) printf '%s\n' "$line" ;;
        esac
    done <"$document" >"$scratch/document"
    cp "$scratch/document" "$document"
}

# Draws a picture of so many points by so many with what standard input has gnuplot do.
draw() {
    { cat <<DRAWING
set terminal svg size $2,$3 font "sans-serif,15" background "white" linewidth 1.5 noenhanced
set output "$pictures/$1.svg"
set style line 1 lc rgb "#1f4e8c" pt 7 ps 0.8
set style line 2 lc rgb "#d9822b" pt 5 ps 0.8
set style line 3 lc rgb "#777777" pt 9 ps 1
set style line 8 lc rgb "#6f9fd8" lw 3
set style line 9 lc rgb "#b00020" lw 2
set style line 10 lc rgb "#dddddd" lw 0.7
set border 3
set tics nomirror
set grid xtics ls 10
set datafile separator "\t"
DRAWING
    cat; } | gnuplot
    echo "$pictures/$1.svg"
}

# Draws rows one below the other: the median as a point, a line from the least to the greatest, and
# the target, where there is one, as an upright stroke. The axis is logarithmic.
#
#     draw_ratios PICTURE TICS LABEL
draw_ratios() {
    local picture=$1 tics=$2 label=$3 rows=$scratch/$1.tsv from to count widest
    cat >"$scratch/selected"
    read -r from to < <(awk -F '\t' '
        { for (i = 3; i <= 6; ++i) if ($i != "") {
            if (!from || $i < from) from = $i + 0
            if ($i > to) to = $i + 0 } }
        END { print from / 1.2, to * 1.2 }' "$scratch/selected")
    # What a row does not have is drawn where it is not seen.
    awk -F '\t' -v OFS='\t' -v from="$from" '
        $4 == "" { $4 = $5 = $3 } $6 == "" { $6 = from / 10 } { print }' "$scratch/selected" >"$rows"
    count=$(wc -l <"$rows")
    widest=$(cut -f 2 "$rows" | wc -L)
    draw "$picture" 900 $((90 + 28 * count)) <<DRAWING
set logscale x
set xrange [$from:$to]
set yrange [$count:-1]
set xtics ($tics)
set xlabel "$label"
set arrow from 1,graph 0 to 1,graph 1 nohead lc rgb "#777777" lw 1
set lmargin $((widest + 1))
unset key
plot "$rows" using 6:(column(0) - 0.36):(0):(0.72) with vectors nohead ls 9 notitle, \
    "" using 4:0:(column(5) - column(4)):(0) with vectors nohead ls 8 notitle, \
    "" using 3:0:ytic(2) with points ls 1 notitle
DRAWING
}

# Prints, for the works of a table that match, the amount that their names begin with and the figure.
list_growth() { select_rows growth "$1" | awk -F '\t' '{ print $2 + 0 "\t" $3 }' >"$2"; }

draw_growth() {
    list_growth "MB of small meshes" "$scratch/small"
    list_growth "MB of large meshes" "$scratch/large"
    list_growth "textures" "$scratch/textures"
    draw growth 900 380 <<DRAWING
set multiplot layout 1,2
set logscale x
set grid ytics ls 10
set key top left reverse Left at graph 0, 1.18 horizontal
set tmargin 3
set yrange [0:*]
set xlabel "megabytes"
set ylabel "nanoseconds a byte"
set xrange [0.7:1500]
set xtics (1, 10, 100, "1,000" 1000)
plot "$scratch/small" using 1:2 with linespoints ls 1 title "small meshes", \
    "$scratch/large" using 1:2 with linespoints ls 2 title "large meshes"
set xlabel "textures"
set ylabel "nanoseconds a texture"
set xrange [7:150000]
set format y "%'.0f"
set xtics (10, 100, "1,000" 1000, "10,000" 10000, "100,000" 100000)
plot "$scratch/textures" using 1:2 with linespoints ls 1 title "textures, no variant"
DRAWING
}

draw_threads() {
    local command
    for command in mark check; do
        select_rows threads "$command" | sed 's/zek.*-j //' >"$scratch/$command"
    done
    draw threads 620 400 <<DRAWING
set logscale x
set xrange [0.9:9]
set yrange [0:*]
set xtics (1, 2, 4, 8)
set grid ytics ls 10
set key top left reverse Left at graph 0, 1.14 horizontal
set tmargin 3
set xlabel "threads"
set ylabel "time, as a ratio to one thread"
plot "$scratch/mark" using (column(2) * 0.98):3:4:5 with yerrorlines ls 1 title "zek mark", \
    "$scratch/check" using (column(2) * 1.02):3:4:5 with yerrorlines ls 2 title "zek check"
DRAWING
}

# Prints a row of Documents/Scale.md as lines of models, milliseconds of the processors for a model,
# megabytes.
list_scale() {
    awk -F ' *[|] *' -v row="$1" '
        $3 ~ /[0-9] models/ && !n { for (n = 3; $n ~ /^[0-9,]+( models)?$/; ++n) { models[n] = $n; gsub(/[^0-9]/, "", models[n]) } }
        $2 == row { for (i = 3; i < n; ++i) { split($i, cell, " "); print models[i] "\t" cell[1] "\t" cell[3] } }
    ' Documents/Scale.md
}

draw_scale() {
    list_scale '`mark`, nothing to change' >"$scratch/mark"
    list_scale 'the same, `--files0-from`' >"$scratch/list"
    list_scale '`check`, nothing wrong' >"$scratch/check"
    [ -s "$scratch/mark" ] && [ -s "$scratch/list" ] && [ -s "$scratch/check" ] \
        || fail "Documents/Scale.md has no such rows"
    draw models 900 420 <<DRAWING
set multiplot layout 1,2
set logscale xy
set offsets graph 0.06, graph 0.06
set grid ytics ls 10
set xtics ("1,000" 1000, "10,000" 10000, "200,000" 200000)
set xlabel "models"
set key at screen 0.08, 0.98 top left reverse Left
set tmargin 5
set ylabel "milliseconds of the processors, a model"
plot "$scratch/check" using 1:2 with linespoints ls 2 title "zek check", \
    "$scratch/mark" using 1:2 with linespoints ls 1 title "zek mark", \
    "$scratch/list" using 1:2 with linespoints ls 3 title "zek mark --files0-from"
unset key
set ylabel "megabytes of memory"
unset logscale y
set yrange [0:*]
plot "$scratch/check" using 1:3 with linespoints ls 2 notitle, \
    "$scratch/mark" using 1:3 with linespoints ls 1 notitle, \
    "$scratch/list" using 1:3 with linespoints ls 3 notitle
DRAWING
}

say "Drawing the figures"
wide="0.001, 0.002, 0.005, 0.01, 0.02, 0.05, 0.1, 0.2, 0.5, 1, 2, 5, 10"
select_rows '^(floor|zek-floor)$' | draw_ratios floor "0.1, 0.2, 0.3, 0.5, 0.7, 1, 1.5, 2, 3, 5, 10" \
    "time, as a ratio to a program that does the least (red: target)"
select_rows '^zek$' | draw_ratios zek "$wide" \
    "time, as a ratio to that of ZEKTexComp (red: target)"
select_rows '^disk$' | draw_ratios disk "$wide" "time, as a ratio"
select_rows '^functions$' | draw_ratios functions "$wide" \
    "time, as a ratio to the fastest rival"
draw_growth
draw_threads
draw_scale
replace_tables
echo "Documents/Performance.md"
