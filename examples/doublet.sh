#!/usr/bin/env bash
# A geothermal doublet in a deep sandstone: flow, heat and a tracer over 50 years of operation.
#
# Usage: [TD=PROGRAM] bash doublet.sh FOLDER
source "$(dirname "$0")/common.bash"

new_model doublet "Geothermal doublet in a deep sandstone"

# 6 km x 4 km of ground around two wells 1200 m apart. The wells stand in cells of 20 m, from where
# the cells grow by a constant factor.
columns=($(graded 17 20 2390 | tac) 20 $(graded 12 20 590)
    $(graded 12 20 590 | tac) 20 $(graded 17 20 2390))
rows=($(graded 19 20 1990 | tac) 20 $(graded 20 20 1990))
td grid set "$model" --layers 12 --columns 60 --column-size 100 --rows 40 --row-size 100 --finish
td grid size "$model" $(numbered --column "${columns[@]}") $(numbered --row "${rows[@]}")
injection="i == 18 && j == 20" # x = 2400 m, y = 2000 m
production="i == 43 && j == 20" # x = 3600 m, y = 2000 m

# 580 m of rock below a depth of 1800 m: claystone (cap rock), sandstone (reservoir), basement.
thickness=(100 75 50 25 20 20 20 20 25 50 75 100)
all=$(seq 12)
caprock="1 2 3 4"
reservoir="5 6 7 8"
basement="9 10 11 12"
td layers set "$model" --geometry thickness $(numbered --thickness "${thickness[@]}")
define 1403 "$caprock" 1
define 1403 "$reservoir" 2
define 1403 "$basement" 3

td type set "$model" --flow 1 --flow-type simulated --heat 1 --heat-scheme I \
    --transport 1 --transport-scheme S
# Nothing is coupled: density and viscosity are those of water at 80 degrees everywhere, so that
# minitervex, too, computes this model.
td coupling set "$model" --full 0 --constant Viscosity=1 --water Viscosity=3.6E-04
td reference-density set "$model" 972.0
td info-results set "$model" --level 1 --protocol 1 --vtk 1 \
    --plt3d 0 --gnuplot 0 --tecplot 0 --tecplot2 0 --thermal 0

# Rock. The permeability is the vertical one; along the bedding the sandstone conducts five times as
# well. Thermal capacity in MJ/(m3 K), thermal conductivity in W/(m K).
td rock set "$model" --zones 3 \
    --porosity 1=0.05 --permeability 1=1E-18 --anisotropy-x 1=2. --anisotropy-y 1=2. \
    --porosity 2=0.18 --permeability 2=1.2E-13 --anisotropy-x 2=5. --anisotropy-y 2=5. \
    --porosity 3=0.02 --permeability 3=1E-17 --anisotropy-x 3=1. --anisotropy-y 3=1. \
    --compress 1=5.0E-10 --compress 2=1.0E-10 --compress 3=2.0E-11
td heat set "$model" --capacity 1=2.3 --capacity 2=2.1 --capacity 3=2.4 \
    --conductivity 1=2.0 --conductivity 2=3.0 --conductivity 3=2.5 \
    --anisotropy-x all=1. --anisotropy-y all=1. --production 3=1.5E-6

# Initial temperature: what a heat flow of 75 mW/m2 makes of 72 degrees at the top of the model.
temperature=($(awk -v thickness="${thickness[*]}" 'BEGIN {
    flow = 0.075; temperature = 72
    layers = split(thickness, metres, " ")
    for (layer = 1; layer <= layers; ++layer) {
        conductivity = layer <= 4 ? 2.0 : layer <= 8 ? 3.0 : 2.5
        rise = flow * metres[layer] / conductivity
        printf "%.3f\n", temperature + rise / 2
        temperature += rise
    }
}'))
for layer in $all; do
    define 1402 "$layer" "${temperature[layer - 1]}"
done
# Fixed temperature at the top and at the sides, constant heat flow at the base.
define 1405 1 -1
define 1405 "$(seq 2 11)" "i == 1 || i == nx || j == 1 || j == ny ? -1 : 1"
define 1405 12 "i == 1 || i == nx || j == 1 || j == ny ? -1 : 2"
define 1437 12 0.075

# Regional flow from south to north, across the line of the wells: 1 m of head a kilometre.
define 10 "$all" "100 - y / 1000"
define 5 "$all" "j == 1 || j == ny ? -1 : 1"

# The water that flows in from the south brings no tracer. All of it comes with the injected water.
define 40 "$all" "j == ny ? -1 : 1"
define 1406 1 0 # and so are the layers below, which get nothing else
td tracer set "$model" --tracer 1 --active 1 --concentration 1
td dispersion set "$model" --diffusion 0.5 --longitudinal 20.0 --transverse 2.0

# A year of trial at 30 L/s, then 49 years at 60 L/s: a quarter of it in each layer of the sandstone.
# The cooled water goes back with 35 degrees.
td periods set "$model" --unit 5 --flow transient \
    --period 1 --use 1 --length 1 --steps 24 --monitoring 2 \
    --period 2 --use 1 --length 49 --steps 294 --monitoring 3
define 11 "$reservoir" "$injection ? 0.0075 : $production ? -0.0075 : 0"
define 11 "$reservoir" "$injection ? 0.015 : $production ? -0.015 : 0" --period 2
define 299 "$reservoir" "$injection ? 35 : 0"
td array copy-period "$model" 299 1 2
# Both wells are numbered layer by layer from the base of the sandstone, the injection well first.
for well in 1 3 5 7; do
    td reinjection set "$model" --well "$well" --species 1 --value 1
done
td points set "$model" 1 --name INJECT --active 1 --x 2400 --y 2000 --layer 6
td points set "$model" 2 --name PRODUCE --active 1 --x 3600 --y 2000 --layer 6
td points set "$model" 3 --name MIDWAY --active 1 --x 2990 --y 2000 --layer 6

td solver set "$model" bicgstab --om-flow 10 --om-heat 10 --om-transport 10 --iterations 5000 \
    --precond-flow 2 --precond-heat 2 --precond-transport 2 \
    --term-flow 2 --term-heat 2 --term-transport 2
td outer-iteration set "$model" --active 1 --chi 0.5 --iterations 5 \
    --flow-limit 0.001 --heat-limit 0.001
td check "$model"
