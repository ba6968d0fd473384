#!/usr/bin/env Rscript
# LAeq of each clock hour of a log: the energy mean, by row length, of the rows that count.
#
#     hourly_means.R FILE
#
# kestrane-cli is found on the path or by KESTRANE_CLI.
file <- commandArgs(trailingOnly = TRUE)
if (length(file) != 1) stop("hourly_means.R FILE")
cli <- Sys.getenv("KESTRANE_CLI", "kestrane-cli")
lines <- system2(cli, c("export", "--format", "csv", "-o", "-", shQuote(file)), stdout = TRUE)
rows <- read.csv(text = lines)
rows <- rows[rows$excluded == 0 & !is.na(rows$LeqA_dB), ]
hour <- substr(rows$start, 12, 13)
energy <- tapply(rows$seconds * 10^(rows$LeqA_dB / 10), hour, sum)
seconds <- tapply(rows$seconds, hour, sum)
cat(sprintf("%s:00\t%.1f dB\t%.2f h\n", names(energy), 10 * log10(energy / seconds), seconds / 3600), sep = "")
