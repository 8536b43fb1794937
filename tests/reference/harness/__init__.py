"""Runs the program and the reference on the same case, and compares what they leave behind."""
