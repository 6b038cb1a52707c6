"""Files said otherwise and their copies, held against the files as they were and theirs."""
