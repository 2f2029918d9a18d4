# What the example scripts share. Each of them sources this file and then works with
#   $folder    where the model goes
#   $model     its project file (new_model sets it)
#   columns    widths of the columns [m], from west to east
#   rows       heights of the rows [m], from north to south
set -eEuo pipefail

# A command that fails is told with its line in the script.
on_error() { echo "$0: line ${BASH_LINENO[${#BASH_LINENO[@]} - 2]} failed" >&2; }
trap on_error ERR

# Numbers have a decimal point, whatever language the shell speaks.
export LC_ALL=C

folder=${1:?"usage: [TD=PROGRAM] bash $0 FOLDER"}
columns=()
rows=()

# The program; TD in the environment names another one than the `td` on the path.
td() { command "${TD:-td}" "$@"; }

# new_model NAME TITLE: an empty model in $folder. A model that is there already is left alone.
new_model() {
    mkdir -p "$folder"
    model=$folder/$1.td1
    td new "$model"
    td project set "$model" INFO DESCRIPTION "$2"
}

# equal COUNT SIZE: the sizes of COUNT equal cells.
equal() {
    awk -v count="$1" -v size="$2" 'BEGIN { while (count-- > 0) print size }'
}

# graded COUNT SIZE LENGTH: COUNT cell sizes beside a cell of the size SIZE, each larger than the one
# before by the same factor, together LENGTH long.
graded() {
    awk -v count="$1" -v size="$2" -v all="$3" '
        function together(factor, n, sum) {
            for (n = 1; n <= count; ++n) sum += size * factor ^ n
            return sum
        }
        BEGIN {
            low = 0.1; high = 10
            while (high - low > 1e-9) {
                factor = (low + high) / 2
                if (together(factor) < all) low = factor; else high = factor
            }
            for (n = 1; n < count; ++n) {
                cell = sprintf("%.1f", size * factor ^ n)
                print cell
                all -= cell
            }
            printf "%.1f\n", all
        }'
}

# numbered OPTION VALUE...: "OPTION 1=VALUE OPTION 2=VALUE ...".
numbered() {
    local option=$1 number=0 value
    shift
    for value in "$@"; do
        echo "$option" "$((++number))=$value"
    done
}

# cells FORMULA: a grid layer as text. The formula gives the value of a cell from its column i and
# row j, the numbers of columns and rows nx and ny, the layer, and the middle of the cell, x metres
# from the western and y metres from the southern edge of the grid (in a vertical section y is the
# height above its base).
cells() {
    awk -v widths="${columns[*]}" -v heights="${rows[*]}" -v layer="${layer:-1}" '
        BEGIN {
            nx = split(widths, width, " ")
            ny = split(heights, height, " ")
            for (j = 1; j <= ny; ++j) north += height[j]
            for (j = 1; j <= ny; ++j) {
                y = north - height[j] / 2
                north -= height[j]
                west = 0
                for (i = 1; i <= nx; ++i) {
                    x = west + width[i] / 2
                    west += width[i]
                    printf "%s%.7g", i == 1 ? "" : " ", ('"$1"')
                }
                print ""
            }
        }'
}

# define PARAMETER LAYERS FORMULA [OPTION...]: gives the cells of these layers their values and marks
# the item of the menu as defined.
define() {
    local layer
    for layer in $2; do
        cells "$3" | td array write "$model" "$1" --layer "$layer" --define "${@:4}"
    done
}

# rectangle WEST SOUTH EAST NORTH, ellipse X Y RADIUS_X RADIUS_Y: the nodes of a zone, x and y in
# metres as in `cells`.
rectangle() { echo "$1,$2 $3,$2 $3,$4 $1,$4"; }
ellipse() {
    awk -v x="$1" -v y="$2" -v radius_x="$3" -v radius_y="$4" 'BEGIN {
        nodes = 40
        for (n = 0; n < nodes; ++n) {
            turn = 6.283185 * n / nodes
            printf "%.2f,%.2f ", x + radius_x * cos(turn), y + radius_y * sin(turn)
        }
    }'
}

# zone PARAMETER LAYERS VALUE NODES: draws a zone in each of these layers and gives its cells the
# value.
zone() {
    local layer number nodes
    nodes=$(awk -v heights="${rows[*]}" -v nodes="$4" 'BEGIN {
        ny = split(heights, height, " ")
        for (j = 1; j <= ny; ++j) north += height[j]
        count = split(nodes, node, " ")
        for (n = 1; n <= count; ++n) {
            split(node[n], at, ",")
            printf "%s,%s ", at[1], north - at[2]
        }
    }')
    for layer in $2; do
        number=$(td zones add "$model" --param "$1" --layer "$layer" --value "$3" --nodes "$nodes")
        td zones transfer "$model" --param "$1" --layer "$layer" --zone "$number"
    done
}
