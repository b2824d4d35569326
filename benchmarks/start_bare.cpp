// SPDX-FileCopyrightText: Aerolith developers
// Loads the libraries of aerolith-cli and does nothing.
int main() {}
