#!/usr/bin/env bash
# Permafrost below a young lake while the climate warms: thawing by heat conduction.
#
# Usage: [TD=PROGRAM] bash frost.sh FOLDER
source "$(dirname "$0")/common.bash"

new_model frost "Thawing permafrost below a lake"

# 300 m x 240 m of tundra with a round lake in the middle.
columns=($(equal 30 10))
rows=($(equal 24 10))
lake=$(ellipse 150 120 60 60)
td grid set "$model" --layers 16 --columns 30 --column-size 10 --rows 24 --row-size 10 --finish

# 300 m deep, from half a metre at the surface, where the seasons work, to tens of metres.
thickness=(0.5 $(graded 15 0.5 299.5))
td layers set "$model" --geometry thickness $(numbered --thickness "${thickness[@]}")

td type set "$model" --flow 0 --heat 1 --heat-scheme U --permafrost 1 --transport 0
td coupling set "$model" --flow-heat 0 --density 0 --rock-temperature 0 --constant Density=1
td info-results set "$model" --level 2 --protocol 0 --vtk 1 --thermal 1 \
    --plt3d 0 --gnuplot 0 --tecplot 0 --tecplot2 0

# The ground from the surface down: silt to 4 m, gravel to 60 m, sandstone. -5 degrees at the surface
# and 60 mW/m2 from below put the base of the permafrost at about 210 m. The ground begins to thaw at
# the solidus temperature, lower in the fine pores of the silt, and has thawed at 0 degrees; frozen
# through, 95 % of the pore space is ice. The bottom of the lake is warm and has thawed.
while read -r layer zone temperature solidus ice; do
    define 1403 "$layer" "$zone"
    define 1402 "$layer" "$temperature"
    define 1434 "$layer" "$ice"
    define 1435 "$layer" "$solidus"
done < <(awk -v thickness="${thickness[*]}" 'BEGIN {
    split("0.45 0.25 0.08", porosity, " ")
    split("-2 -0.5 -0.5", solidus, " ")
    split("1.6 2.4 2.6", conductivity, " ")
    layers = split(thickness, metres, " ")
    surface = -5
    for (layer = 1; layer <= layers; ++layer) {
        middle = depth + metres[layer] / 2
        depth += metres[layer]
        zone = middle < 4 ? 1 : middle < 60 ? 2 : 3
        rise = 0.06 * metres[layer] / conductivity[zone]
        temperature = surface + rise / 2
        surface += rise
        frozen = temperature / solidus[zone]
        frozen = frozen < 0 ? 0 : frozen > 1 ? 1 : frozen
        printf "%d %d %.3f %s %.4f\n", layer, zone, temperature, solidus[zone],
            0.95 * porosity[zone] * frozen
    }
}')
zone 1402 1 3 "$lake"
zone 1434 1 0 "$lake"
define 1436 1 0 # and 0 below

td rock set "$model" --zones 3 --compressibility 1.0E-10 \
    --porosity 1=0.45 --permeability 1=1E-15 --porosity 2=0.25 --permeability 2=1E-11 \
    --porosity 3=0.08 --permeability 3=1E-14
td heat set "$model" --capacity 1=2.0 --capacity 2=2.1 --capacity 3=2.2 \
    --conductivity 1=1.6 --conductivity 2=2.4 --conductivity 3=2.6

# Fixed temperature at the surface and the lake bottom, heat flow at the base, closed sides.
td array create "$model" 1405 --default 1
define 1405 1 -1
define 1405 16 2
define 1437 16 0.06

# A century in four periods; the surface gets warmer from one to the next.
td periods set "$model" --unit 5 --flow transient \
    --period 1 --use 1 --length 25 --steps 300 --monitoring 12 --shift 0 \
    --period 2 --use 1 --length 25 --steps 300 --monitoring 12 --shift 0.8 \
    --period 3 --use 1 --length 25 --steps 300 --monitoring 12 --shift 1.9 \
    --period 4 --use 1 --length 25 --steps 300 --monitoring 12 --shift 3.5
td points set "$model" 1 --name LAKE --active 1 --x 150 --y 120 --layer 5
td points set "$model" 2 --name SHORE --active 1 --x 85 --y 120 --layer 5
td points set "$model" 3 --name TUNDRA --active 1 --x 15 --y 225 --layer 5

td solver set "$model" nag --om-heat 10 --err-heat 1.0E-12 --iterations 1000 --term-heat 0
td check "$model"
