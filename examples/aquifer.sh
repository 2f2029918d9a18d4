#!/usr/bin/env bash
# A phreatic aquifer between a hillside and a river: recharge, lateral inflow and three wells.
#
# Usage: [TD=PROGRAM] bash aquifer.sh FOLDER
source "$(dirname "$0")/common.bash"

new_model aquifer "Phreatic aquifer between a hillside and a river"

# 2500 m from the hillside in the west to the river in the east, 2000 m along the valley.
columns=($(equal 50 50))
rows=($(equal 40 50))
td grid set "$model" --layers 3 --columns 50 --column-size 50 --rows 40 --row-size 50 --finish

# Elevations [m above sea level]: the ground falls to the river, the beds below it are level along
# the valley and fill a trough. Layer 1 is gravel with a free surface, 2 sand, 3 silty fine sand.
ground="448 - 0.004 * x + 0.6 * sin(y / 300)"
below_gravel="425 - 0.003 * x"
below_sand="$below_gravel - 12"
base="$below_sand - 4 - 8 * sin(3.14159 * x / 2500)"
td layers set "$model" --geometry arrays --unconfined 1
define 3 1 "$ground"
define 4 1 "$below_gravel"
define 3 2 "$below_gravel"
define 4 2 "$below_sand"
define 3 3 "$below_sand"
define 4 3 "$base"

# Gravel, sand, the finer bed; a lens of clay lies in the sand.
for layer in 1 2 3; do
    define 1403 "$layer" "$layer"
done
zone 1403 2 4 "$(ellipse 900 1300 400 250)"

td type set "$model" --flow 1 --flow-type simulated --heat 0 --transport 0
td coupling set "$model" --flow-heat 0 --density 0 --permeability 0 --rock-temperature 0
td info-results set "$model" --level 1 --protocol 1 --gnuplot 1 \
    --plt3d 0 --tecplot 0 --tecplot2 0 --vtk 0 --thermal 0

# The permeability [m2] is the vertical one; along the beds it is some times higher.
td rock set "$model" --zones 4 --compressibility 1.0E-09 \
    --porosity 1=0.22 --permeability 1=2E-11 --anisotropy-x 1=3. --anisotropy-y 1=3. \
    --porosity 2=0.18 --permeability 2=5E-12 --anisotropy-x 2=5. --anisotropy-y 2=5. \
    --porosity 3=0.12 --permeability 3=1E-13 --anisotropy-x 3=10. --anisotropy-y 3=10. \
    --porosity 4=0.08 --permeability 4=1E-16 --anisotropy-x 4=2. --anisotropy-y 4=2.

# The river holds the head in the easternmost column. From the hillside water enters the gravel and
# the sand; the finer bed is tight there.
define 5 "1 2" "i == nx ? -1 : i == 1 ? 2 : 1"
define 5 3 "i == nx ? -1 : 1"
define 10 "1 2 3" "437 - 0.002 * x"
define 1433 "1 2" "i == 1 ? 1E-7 : 0"

# Recharge by rain: 250 mm a year on meadows, 150 mm in the forest at the hillside, 60 mm in the
# village.
define 1407 1 7.93E-9
zone 1407 1 4.75E-9 "$(rectangle 0 0 600 2000)"
zone 1407 1 1.9E-9 "$(rectangle 1500 700 1900 1100)"

# Two wells in the sand and the gravel; after ten years they give less and a third one is added.
td periods set "$model" --unit 4 --flow transient \
    --period 1 --use 1 --length 3650 --steps 120 --monitoring 12 \
    --period 2 --use 1 --length 3650 --steps 120 --monitoring 12
define 11 1 "i == 28 && j == 36 ? -0.008 : 0"
define 11 2 "i == 36 && j == 12 ? -0.012 : 0"
define 11 1 "i == 28 && j == 36 ? -0.006 : 0" --period 2
define 11 2 "i == 36 && j == 12 ? -0.009 : i == 20 && j == 24 ? -0.007 : 0" --period 2

td points set "$model" 1 --name WELL1 --active 1 --x 1375 --y 225 --layer 1
td points set "$model" 2 --name WELL2 --active 1 --x 1775 --y 1425 --layer 2
td points set "$model" 3 --name WELL3 --active 1 --x 975 --y 825 --layer 2
td points set "$model" 4 --name GAUGE --active 1 --x 2125 --y 1000 --layer 1

td solver set "$model" plu --om-flow 10 --iterations 2000 --precond-flow 2 --term-flow 0
td check "$model"
