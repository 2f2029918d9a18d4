#!/usr/bin/env bash
# A vertical cross-section through a fault: hot water rises where the groundwater leaves the hills.
#
# Usage: [TD=PROGRAM] bash section.sh FOLDER
source "$(dirname "$0")/common.bash"

new_model section "Cross-section through a fault with rising hot water"

# Three slabs of 400 m one behind the other, each 8 km long and 4 km deep. The rows are the depth:
# 50 m at the surface, growing downwards. y is the height above the base of the section.
columns=($(equal 64 125))
rows=(50 $(graded 31 50 3950))
all="1 2 3"
td grid set "$model" --layers 3 --columns 64 --column-size 125 --rows 32 --row-size 125 \
    --orientation vertical --finish
td grid size "$model" $(numbered --row "${rows[@]}")
td layers set "$model" --geometry thickness --thickness all=400

# Zones: 1 cover, 2 dipping sandstone, 3 basement, 4 fault. The fault dips to the east and, as it
# strikes obliquely, lies a column farther east in each slab; its eastern block has come down 400 m.
# The sandstone is 350 m thick and dips by 6 %.
define 1403 "$all" 3
for slab in $all; do
    while read -r zone nodes; do
        zone 1403 "$slab" "$zone" "$nodes"
    done < <(awk -v outcrop=$((3500 + 125 * slab)) '
        function node(x, depth) { return sprintf("%.2f,%.2f ", x, 4000 - depth) }
        # Where a bed that is so deep in the west meets the fault.
        function at_fault(depth) {
            depth = (depth + 0.06 * outcrop) / (1 - 0.06 * 0.25)
            return node(outcrop + 0.25 * depth, depth)
        }
        BEGIN {
            print 1, node(0, 0) node(8000, 0) node(8000, 1480) at_fault(1000) \
                at_fault(600) node(0, 600)
            print 2, node(0, 600) at_fault(600) at_fault(950) node(0, 950)
            print 2, at_fault(1000) node(8000, 1480) node(8000, 1830) at_fault(1350)
            print 4, node(outcrop - 90, 0) node(outcrop + 90, 0) \
                node(outcrop + 1090, 4000) node(outcrop + 910, 4000)
        }')
done

td type set "$model" --flow 1 --flow-type simulated --heat 1 --heat-scheme U --transport 0
td coupling set "$model" --flow-heat 1 --density 0 --rock-temperature 1
td info-results set "$model" --level 1 --protocol 1 --tecplot 1 --vtk 1 \
    --plt3d 0 --gnuplot 0 --tecplot2 0 --thermal 0
td reference-density set "$model" 999.7
td rock set "$model" --zones 4 --compressibility 1.0E-10 \
    --porosity 1=0.08 --permeability 1=5E-17 --anisotropy-x 1=10. --anisotropy-y 1=10. \
    --porosity 2=0.15 --permeability 2=1E-14 --anisotropy-x 2=4. --anisotropy-y 2=4. \
    --porosity 3=0.01 --permeability 3=1E-18 --anisotropy-x 3=1. --anisotropy-y 3=1. \
    --porosity 4=0.10 --permeability 4=5E-14 --anisotropy-x 4=0.5 --anisotropy-y 4=1.
td heat set "$model" --capacity all=2.2 --conductivity 1=2.2 --conductivity 2=3.1 \
    --conductivity 3=2.7 --conductivity 4=2.5 --anisotropy-x 1=1.3 --anisotropy-y 1=1.3 \
    --production 1=1.2E-6 --production 2=7E-7 --production 3=2.4E-6 --production 4=1.5E-6

# The water table follows the ground, from the hills in the west down to the valley above the fault
# and up again a little: fixed heads in the uppermost row.
define 10 "$all" "x < 3800 ? 310 - 0.07 * x : 44 + 0.02 * (x - 3800)"
define 5 "$all" "j == 1 ? -1 : 1"

# 10 degrees at the surface, 30 degrees more a kilometre deeper, 70 mW/m2 from below.
define 1402 "$all" "10 + 0.03 * (4000 - y)"
define 1405 "$all" "j == 1 ? -1 : j == ny ? 2 : 1"
define 1437 "$all" "j == ny ? 0.07 : 0"

# Long enough for the temperatures to settle.
td periods set "$model" --unit 5 --flow steady \
    --period 1 --use 1 --length 1000 --steps 100 --monitoring 10 \
    --period 2 --use 1 --length 99000 --steps 990 --monitoring 99
# In a section the two coordinates of a point are its x and its height, the number is the slab.
td points set "$model" 1 --name SPRING --active 1 --x 3660 --y 3950 --layer 1
td points set "$model" 2 --name FAULT --active 1 --x 4125 --y 2500 --layer 2
td points set "$model" 3 --name EAST --active 1 --x 6000 --y 2500 --layer 3

td solver set "$model" bicgstab --om-flow 10 --om-heat 10 --iterations 3000 \
    --precond-flow 2 --precond-heat 2 --term-flow 2 --term-heat 2
td outer-iteration set "$model" --active 1 --chi 0.7 --iterations 8 \
    --flow-limit 0.005 --heat-limit 0.01
td check "$model"
