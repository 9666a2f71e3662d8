-- Pages lead to one another by their files, which have another ending here.
function Link(link)
  link.target = link.target:gsub('^([%w-]+)%.md', '%1.html')
  return link
end
